// The Qt Designer plugin, as the form loader and Qt Designer see it.
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

private Q_SLOTS:
    void everyFrameIsInTheGroupWithIconAndToolTip()
    {
        QPluginLoader loader(QStringLiteral(ZEL_DESIGNER_PLUGIN));
        auto *plugin = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        QCOMPARE(GetUnitCounter(0), 0); // the package itself was not started for it
        QStringList names;
        const QList<QDesignerCustomWidgetInterface *> widgets = plugin->customWidgets();
        for (QDesignerCustomWidgetInterface *widget : widgets) {
            names.append(widget->name());
            QCOMPARE(widget->group(), QStringLiteral("ZelCommonFrames"));
            QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->name()));
            QVERIFY2(!widget->icon().pixmap(16).isNull(), qPrintable(widget->name()));
            QVERIFY2(QFile::exists(QStringLiteral(ZEL_SOURCE_DIR "/") + widget->includeFile()),
                     qPrintable(widget->includeFile()));
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
            form += QStringLiteral("<item><widget class=\"%1\" name=\"the%1\"/></item>").arg(name).toLatin1();
        form += "</layout></widget></ui>";
        QUiLoader loader;
        loader.clearPluginPaths();
        loader.addPluginPath(QFileInfo(QStringLiteral(ZEL_DESIGNER_PLUGIN)).path());
        QBuffer buffer(&form);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const std::unique_ptr<QWidget> made(loader.load(&buffer));
        QVERIFY2(made, qPrintable(loader.errorString()));
        for (const QString &name : names) {
            const auto *frame = made->findChild<QWidget *>(QLatin1String("the") + name);
            QVERIFY2(frame, qPrintable(name));
            QCOMPARE(QString::fromLatin1(frame->metaObject()->className()), name);
        }
    }

    void thePropertiesOfADesignReachTheFrame()
    {
        QByteArray form("<ui version=\"4.0\"><class>F</class><widget class=\"TfraFundAllocation\" name=\"F\">"
                        "<property name=\"AllocByAmount\"><bool>true</bool></property></widget></ui>");
        QUiLoader loader;
        loader.clearPluginPaths();
        loader.addPluginPath(QFileInfo(QStringLiteral(ZEL_DESIGNER_PLUGIN)).path());
        QBuffer buffer(&form);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const std::unique_ptr<QWidget> made(loader.load(&buffer));
        QVERIFY2(made, qPrintable(loader.errorString()));
        QCOMPARE(made->property("AllocByAmount"), QVariant(true));
    }
};

ZEL_TEST_MAIN(tst_designer)
#include "tst_designer.moc"
