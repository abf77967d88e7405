// Frames and forms created by class name.
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "package/Classes.h"
#include "package/ZelCommonFrames.h"

#include <QWidget>

#include <memory>

class tst_classes : public ZelTest
{
    Q_OBJECT
    static QString errorOf(const QString &className)
    {
        try {
            delete CreateByClassName(className, nullptr);
        } catch (const Exception &error) {
            return error.message();
        }
        return {};
    }

private Q_SLOTS:
    void theListNamesEveryClassOnceAndInOrder()
    {
        QStringList names;
        for (const TFrameClass &entry : FrameClasses()) {
            names.append(QString::fromLatin1(entry.ClassName));
            QCOMPARE(QLatin1String(entry.MetaObject->className()), QLatin1String(entry.ClassName));
            QCOMPARE(entry.IsForm, names.last().startsWith(QLatin1String("Tfrm")));
        }
        QStringList sorted = names;
        sorted.sort();
        QCOMPARE(names, sorted);
        QCOMPARE(sorted.removeDuplicates(), 0);
        QCOMPARE(names.size(), 24); // 22 frames and 2 forms
    }

    void everyUnitOfTheTableWithADesignHasAClass()
    {
        QStringList units;
        for (const TFrameClass &entry : FrameClasses())
            units.append(QString::fromLatin1(entry.UnitName));
        const TPackageInfoTable *table = GetPackageInfoTable();
        for (int i = 0; i < table->UnitCount; ++i) {
            const QString unit = QString::fromLatin1(table->UnitInfo[i].UnitName);
            const bool design =
                (unit.startsWith(QLatin1String("fra_")) && unit != QLatin1String("fra_BaseFrame")) ||
                unit.startsWith(QLatin1String("frm_"));
            QVERIFY2(design == units.contains(unit), qPrintable(unit));
        }
    }

    void eachIsCreatedUnderItsParentAfterInitialize()
    {
        Initialize();
        for (const TFrameClass &entry : FrameClasses()) {
            QWidget parent;
            QWidget *made = CreateByClassName(QString::fromLatin1(entry.ClassName), &parent);
            QCOMPARE(QLatin1String(made->metaObject()->className()), QLatin1String(entry.ClassName));
            QCOMPARE(made->parentWidget(), &parent);
            const std::unique_ptr<QWidget> alone(
                CreateByClassName(QString::fromLatin1(entry.ClassName), nullptr));
            QVERIFY(!alone->parentWidget());
        }
        Finalize();
    }

    void anUnknownNameAndAPackageNotStartedAreRefused()
    {
        const QString before = errorOf(QStringLiteral("TfraHeader"));
        QVERIFY2(before.contains(QLatin1String("not initialised")), qPrintable(before));
        Initialize();
        QVERIFY(errorOf(QStringLiteral("TfraHeader")).isEmpty());
        for (const QString &name : {QStringLiteral("TfraNothing"), QStringLiteral("tfraheader"), QString(),
                                    QStringLiteral("TfraHeade"), QStringLiteral("ZZ")}) {
            const QString error = errorOf(name);
            QVERIFY2(error.contains(QLatin1String("no class")) && error.contains(name), qPrintable(error));
        }
        Finalize();
        QVERIFY(errorOf(QStringLiteral("TfraHeader")).contains(QLatin1String("not initialised")));
    }
};

ZEL_TEST_MAIN(tst_classes)
#include "tst_classes.moc"
