// The Qt Designer plugin as QUiLoader and Qt Designer load it.
#include "ZelTest.h"

#include "package/Classes.h"
#include "package/ZelCommonFrames.h"

#include <QBuffer>
#include <QFileInfo>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QUiLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>

using namespace Qt::StringLiterals;

class tst_designer : public ZelTest
{
    Q_OBJECT
    static QStringList frameNames()
    {
        QStringList names;
        for (const TFrameClass &entry : FrameClasses())
            if (!entry.IsForm)
                names.append(QString::fromLatin1(entry.ClassName));
        return names;
    }

    /// Loads @p form with this plugin only; nullptr when that fails.
    static std::unique_ptr<QWidget> load(QByteArray form)
    {
        QUiLoader loader;
        loader.clearPluginPaths();
        loader.addPluginPath(QFileInfo(QStringLiteral(ZEL_DESIGNER_PLUGIN)).path());
        QBuffer buffer(&form);
        std::unique_ptr<QWidget> made(buffer.open(QIODevice::ReadOnly) ? loader.load(&buffer) : nullptr);
        if (!made)
            qWarning("%s", qPrintable(loader.errorString()));
        return made;
    }

private Q_SLOTS:
    void everyFrameIsInTheGroupWithIconAndToolTip()
    {
        QPluginLoader loader(QStringLiteral(ZEL_DESIGNER_PLUGIN));
        auto *plugin = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        QCOMPARE(GetUnitCounter(0), 0); // loading the plugin does not start the package
        QStringList names;
        const QList<QDesignerCustomWidgetInterface *> widgets = plugin->customWidgets();
        for (QDesignerCustomWidgetInterface *widget : widgets) {
            names.append(widget->name());
            QCOMPARE(widget->group(), u"ZelCommonFrames"_s);
            QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->name()));
            QVERIFY2(!widget->icon().pixmap(16).isNull(), qPrintable(widget->name()));
            QVERIFY2(QFile::exists(sourceFile(widget->includeFile())), qPrintable(widget->includeFile()));
        }
        names.sort();
        QCOMPARE(names, frameNames());
    }

    void theFormLoaderCreatesAFormWithEveryFrame()
    {
        QByteArray form("<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"
                        "<layout class=\"QVBoxLayout\" name=\"layout\">");
        const QStringList names = frameNames();
        for (const QString &name : names)
            form += u"<item><widget class=\"%1\" name=\"the%1\"/></item>"_s.arg(name).toLatin1();
        form += "</layout></widget></ui>";
        const std::unique_ptr<QWidget> made = load(form);
        QVERIFY(made);
        for (const QString &name : names) {
            const auto *frame = made->findChild<QWidget *>("the"_L1 + name);
            QVERIFY2(frame, qPrintable(name));
            QCOMPARE(QString::fromLatin1(frame->metaObject()->className()), name);
        }
    }

    void thePropertiesOfADesignReachTheFrame()
    {
        const std::unique_ptr<QWidget> made =
            load("<ui version=\"4.0\"><class>F</class><widget class=\"TfraFundAllocation\" name=\"F\">"
                 "<property name=\"AllocByAmount\"><bool>false</bool></property>"
                 "<property name=\"ShowToolBar\"><bool>false</bool></property>"
                 "<property name=\"ColumnCaption_Fund\"><string>Fonds</string></property></widget></ui>");
        QVERIFY(made);
        QCOMPARE(made->property("AllocByAmount"), QVariant(false));
        QCOMPARE(made->property("ColumnCaption_Fund"), QVariant(u"Fonds"_s));
        QVERIFY(made->findChild<QWidget *>(u"pnlToolBar"_s)->isHidden());
    }

    // A caption set in a design appears on elements and headers.
    void theCaptionsOfADesignReachElementsAndHeaders()
    {
        int elements = 0;
        for (const QString &name : frameNames()) {
            const bool element = name.startsWith("TfraElmt"_L1) || name.startsWith("TfraEmlt"_L1);
            if (!element && !name.endsWith("Header"_L1))
                continue;
            ++elements;
            const std::unique_ptr<QWidget> made =
                load(u"<ui version=\"4.0\"><class>F</class><widget class=\"%1\" name=\"F\">"
                     "<property name=\"Caption\"><string>Premium</string></property>"
                     "</widget></ui>"_s.arg(name)
                         .toUtf8());
            QVERIFY2(made, qPrintable(name));
            QCOMPARE(made->property("Caption"), QVariant(u"Premium"_s));
            QString shown;
            for (const char *component : {"lblCaption", "rbCaption", "cbCaption", "pnlPageHeader"}) {
                if (const auto *child = made->findChild<QWidget *>(QLatin1String(component)))
                    shown = child->property(component[0] == 'p' ? "caption" : "text").toString();
            }
            QCOMPARE(shown, u"Premium"_s);
        }
        QCOMPARE(elements, 13);
    }

    // The description that the plugin gives for a frame creates this frame under its class name.
    void eachFrameIsMadeFromItsOwnDescription()
    {
        QPluginLoader loader(QStringLiteral(ZEL_DESIGNER_PLUGIN));
        auto *plugin = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        for (const QDesignerCustomWidgetInterface *widget : plugin->customWidgets()) {
            const std::unique_ptr<QWidget> made = load(widget->domXml().toUtf8());
            QVERIFY2(made, qPrintable(widget->name()));
            QCOMPARE(QString::fromLatin1(made->metaObject()->className()), widget->name());
            QCOMPARE(QLatin1Char('T') + made->objectName(), widget->name());
        }
    }
};

ZEL_TEST_MAIN_NOT_STARTED(tst_designer)
#include "tst_designer.moc"
