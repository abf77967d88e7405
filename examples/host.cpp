// A small host: it provides clients, opens a product editor with three pages and mirrors the navigation bar
// on a ribbon. With a folder as the argument it steps through the pages and saves screenshots there.
#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "frames/fra_ElmtLabelDouble.h"
#include "frames/fra_ElmtLabelInteger.h"
#include "frames/fra_PageHeader.h"
#include "frames/fra_ToolBar.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QDir>
#include <QMainWindow>
#include <QScopeGuard>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace
{
/// The product's editor form: a tool bar, three pages and the navigation.
class TfrmAnnuityEditor : public TfrmBaseProductEditor
{
public:
    void SetUpProduct(bool) override
    {
        setWindowTitle(tr("Annuity"));
        auto *below = new QWidget(pnlProdEditor);
        auto *row = new QHBoxLayout(below);
        auto *bar = new TfraToolBar(below);
        bar->setMaximumWidth(60);
        connect(bar->sbtClose, &QToolButton::clicked, this, &TfrmBaseProductEditor::fraToolBarsbtCloseClick);
        pages = new TcxPageControl(below);
        pages->addTab(page(tr("Contract"), new TfraElmtLabelInteger, tr("Term in years")), tr("Contract"));
        pages->addTab(page(tr("Payments"), new TfraElmtLabelDouble, tr("Premium")), tr("Payments"));
        pages->addTab(page(tr("Summary"), new TfraElmtLabelDouble, tr("Income")), tr("Summary"));
        row->addWidget(bar);
        row->addWidget(pages, 1);
        pnlProdEditor->layout()->addWidget(below);

        navigation = new TfraBaseNavBar(this);
        navigation->ModuleForm = this;
        connect(navigation->btnNext, &QPushButton::clicked, this, [this] { navigation->Next(*pages); });
        connect(navigation->btnPrev, &QPushButton::clicked, this, [this] { navigation->Prev(*pages); });
        connect(pages, &QTabWidget::currentChanged, this, [this] { navigation->RefreshNavButton(*pages); });
        navigation->RefreshNavBar(*pages, true);
    }

    TcxPageControl *pages = nullptr;
    TfraBaseNavBar *navigation = nullptr;

private:
    template <class Element> QWidget *page(const QString &title, Element *element, const QString &caption)
    {
        auto *sheet = new QWidget;
        auto *column = new QVBoxLayout(sheet);
        auto *header = new TfraPageHeader;
        header->pnlPageHeader->setCaption(title);
        element->Value->Set_Caption(caption);
        column->addWidget(header);
        column->addWidget(element);
        column->addStretch();
        return sheet;
    }
};

/// The host's ribbon: a tool bar with a ribbon item for each action.
class TRibbonBar : public QToolBar
{
public:
    IRibbonItemPtr AddItem(const QString &name, const QString &caption)
    {
        const auto route = [](const QString &item, qint32 index) {
            if (const IZelModulePtr module = StandardModuleManager().ActiveModule())
                SafecallCheck(module->ItemClicked(item, index));
        };
        return std::make_shared<TRibbonItem>(addAction(caption), name, 0, route);
    }
};

/// Chooses a client and steps through the pages with the ribbon; false when a step or a screenshot fails.
bool walk(TfrmAnnuityEditor &form, const TRibbonBar &ribbon, const QDir &folder)
{
    QAction &next = *ribbon.actions().constLast();
    form.cbData->setCurrentIndex(1);
    bool walked = true;
    for (int page = 0; page < form.pages->Get_PageCount(); ++page) {
        QCoreApplication::processEvents();
        const QString picture = folder.filePath(u"host_page%1.png"_s.arg(page + 1));
        walked = form.pages->Get_ActivePageIndex() == page && form.grab().save(picture) && walked;
        walked = next.isEnabled() == (page + 1 < form.pages->Get_PageCount()) && walked;
        next.trigger();
    }
    return walked && ribbon.actions().constFirst()->isEnabled();
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    TBaseClients master;
    master.Add(std::make_unique<TBaseClient>(u"Botha"_s, u"Anna"_s));
    master.Add(std::make_unique<TBaseClient>(u"Naidoo"_s, u"Priya"_s));
    ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, &master);

    QMainWindow window;
    window.setWindowTitle(u"Host"_s);
    auto *ribbon = new TRibbonBar;
    window.addToolBar(ribbon);
    const IRibbonItemPtr previous = ribbon->AddItem(u"rbPrevious"_s, u"Previous"_s);
    const IRibbonItemPtr next = ribbon->AddItem(u"rbNext"_s, u"Next"_s);
    window.resize(420, 80);
    window.show();

    TQuoteInfo info;
    info.Set_Description(u"Life annuity"_s);
    TCustomQuoteEditor editor;
    editor.Set_QuoteInfo(&info);
    TfrmBaseProductEditor::Execute<TfrmAnnuityEditor>(&editor, false);
    QWidget *opened = nullptr;
    SafecallCheck(editor.Get_Module()->get_Window(opened));
    auto &form = dynamic_cast<TfrmAnnuityEditor &>(*opened);
    form.navigation->SetPrevBtn(previous);
    form.navigation->SetNextBtn(next);
    const QString folder = TApplication::arguments().value(1);
    const int result = folder.isEmpty() ? TApplication::exec() : (walk(form, *ribbon, folder) ? 0 : 1);
    StandardModuleManager().CloseAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ZelSystem().Items().Clear();
    return result;
}
