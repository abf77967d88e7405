#include "FramesPlugin.h"

#include "package/Classes.h"
#include "toolkit/Glyphs.h"

#include <QCoreApplication>
#include <QIcon>

using namespace Qt::StringLiterals;

namespace
{
struct About {
    const char *className;
    const char *glyph; ///< the picture in the widget box
    const char *toolTip;
};

// In the order of the widget box.
constexpr About frames[] = {
    {"TBaseFrame", "details",
     QT_TRANSLATE_NOOP("FramesPlugin", "Empty frame that is set up when it is shown")},
    {"TfraHeader", "details", QT_TRANSLATE_NOOP("FramesPlugin", "Header band of a page")},
    {"TfraPageHeader", "details", QT_TRANSLATE_NOOP("FramesPlugin", "Header of a product page")},
    {"TfraToolBar", "save", QT_TRANSLATE_NOOP("FramesPlugin", "General toolbar")},
    {"TfraInvestorDetails", "client", QT_TRANSLATE_NOOP("FramesPlugin", "Details of an investor")},
    {"TfraElmtLabelEdit", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a text")},
    {"TfraElmtLabelMaskedEdit", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a masked text")},
    {"TfraElmtLabelInteger", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a whole number")},
    {"TfraElmtLabelDouble", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a number")},
    {"TfraElmtLabelPictureField", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a picture field")},
    {"TfraElmtLabelComboBox", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Label with a list to choose from")},
    {"TfraElmtCheckBoxDouble", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Check box with a number")},
    {"TfraElmtRadioButtonInteger", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Option with a whole number")},
    {"TfraEmltRadioButtonDouble", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Option with a number")},
    {"TfraElmtRadioButtonMaskedEdit", "edit", QT_TRANSLATE_NOOP("FramesPlugin", "Option with a masked text")},
    {"TfraElmtRadioButtonPictureField", "edit",
     QT_TRANSLATE_NOOP("FramesPlugin", "Option with a picture field")},
    {"TfraTreeView", "funds", QT_TRANSLATE_NOOP("FramesPlugin", "Tree of any chain of datasets")},
    {"TfraFundsTreeView", "fund-group", QT_TRANSLATE_NOOP("FramesPlugin", "Fund catalogue as a tree")},
    {"TfraFundsSelectedListView", "fund", QT_TRANSLATE_NOOP("FramesPlugin", "List of the chosen funds")},
    {"TfraFundSelector", "selector-form",
     QT_TRANSLATE_NOOP("FramesPlugin", "Fund selector: catalogue and chosen funds")},
    {"TfraFundToolBar", "allocate", QT_TRANSLATE_NOOP("FramesPlugin", "Buttons of the fund allocation")},
    {"TfraFundAllocation", "allocate", QT_TRANSLATE_NOOP("FramesPlugin", "Fund allocation grid")},
    {"TfraBaseNavBar", "next", QT_TRANSLATE_NOOP("FramesPlugin", "Steps through the pages of a product")},
};

class Frame : public QDesignerCustomWidgetInterface
{
public:
    Frame(const About &about, const TFrameClass &entry) : m_about(about), m_class(entry) {}

    QString name() const override { return QLatin1String(m_class.ClassName); }
    QString group() const override { return u"ZelCommonFrames"_s; }
    QString toolTip() const override { return QCoreApplication::translate("FramesPlugin", m_about.toolTip); }
    QString whatsThis() const override { return toolTip(); }
    QIcon icon() const override { return GlyphIcon(QLatin1String(m_about.glyph)); }
    QString includeFile() const override
    {
        return folder() + QLatin1Char('/') + QLatin1String(m_class.UnitName) + ".h"_L1;
    }
    bool isContainer() const override { return name() == "TBaseFrame"_L1; }
    QWidget *createWidget(QWidget *parent) override { return m_class.Create(parent); }
    bool isInitialized() const override { return true; }
    void initialize(QDesignerFormEditorInterface *) override {}
    QString domXml() const override
    {
        QString object = name();
        object.remove(0, 1); // fraHeader, as the designs name it
        return u"<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"/></ui>"_s.arg(name(), object);
    }

private:
    QString folder() const
    {
        const QLatin1String unit(m_class.UnitName);
        if (unit == "fra_BaseNavBar"_L1)
            return u"editor"_s;
        if (unit == "fra_TreeView"_L1)
            return u"dataviews"_s;
        return unit.startsWith("fra_Fund"_L1) ? u"funds"_s : u"frames"_s;
    }

    const About &m_about;
    const TFrameClass &m_class;
};
} // namespace

FramesPlugin::FramesPlugin(QObject *parent) : QObject(parent)
{
    for (const About &about : frames)
        if (const TFrameClass *entry = FindFrameClass(QLatin1String(about.className)))
            m_frames.push_back(std::make_unique<Frame>(about, *entry));
}

FramesPlugin::~FramesPlugin() = default;

QList<QDesignerCustomWidgetInterface *> FramesPlugin::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface *> list;
    for (const auto &frame : m_frames)
        list.append(frame.get());
    return list;
}
