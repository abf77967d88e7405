// Frames and forms created by class name.
#include "Errors.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "dataviews/fra_TreeView.h"
#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "frames/fra_ElmtLabelEdit.h"
#include "frames/fra_ElmtRadioButtonInteger.h"
#include "frames/fra_Header.h"
#include "frames/fra_InvestorName.h"
#include "frames/fra_PageHeader.h"
#include "frames/fra_ToolBar.h"
#include "funds/fra_FundAllocation.h"
#include "funds/frm_FundSelector.h"
#include "package/Classes.h"
#include "package/ZelCommonFrames.h"
#include "package/ZelCommonFramesC.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
/// A frame class of a host.
class DerivedFrame : public TfraPageHeader
{
    Q_OBJECT
public:
    using TfraPageHeader::TfraPageHeader;
};

template <class T> QWidget *make(QWidget *parent)
{
    return new T(parent);
}
} // namespace

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
    void cleanup()
    {
        if (GetUnitCounter(0) < 0)
            QCOMPARE(Finalize(), ZEL_OK);
    }

    void theListNamesEveryClassOnceAndInOrder()
    {
        QStringList names;
        for (const TFrameClass &entry : FrameClasses()) {
            names.append(QString::fromLatin1(entry.ClassName));
            QCOMPARE(QLatin1String(entry.MetaObject->className()), QLatin1String(entry.ClassName));
            QCOMPARE(entry.IsForm, names.last().startsWith("Tfrm"_L1));
        }
        QStringList sorted = names;
        sorted.sort();
        QCOMPARE(names, sorted);
        QCOMPARE(sorted.removeDuplicates(), 0);
        QCOMPARE(names.size(), 25); // 23 frames and 2 forms
    }

    void everyUnitOfTheTableWithADesignHasAClass()
    {
        QStringList units;
        for (const TFrameClass &entry : FrameClasses())
            units.append(QString::fromLatin1(entry.UnitName));
        const TPackageInfoTable *table = GetPackageInfoTable();
        for (int i = 0; i < table->UnitCount; ++i) {
            const QString unit = QString::fromLatin1(table->UnitInfo[i].UnitName);
            const bool design = unit.startsWith("fra_"_L1) || unit.startsWith("frm_"_L1);
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
        QCOMPARE(Finalize(), ZEL_OK);
    }

    // The base frame is also a unit of the table.
    void theBaseFrameIsMadeByItsName()
    {
        Initialize();
        const std::unique_ptr<QWidget> made(CreateByClassName(u"TBaseFrame"_s, nullptr));
        QCOMPARE(made->metaObject(), &TBaseFrame::staticMetaObject);
        delete CreateByClassName(u"TBaseFrame"_s, made.get());
        QCOMPARE(made->size(), QSize(375, 246));
    }

    // A C++ host creates frames with new. Before Initialize and after Finalize that throws and leaves nothing
    // behind.
    void framesAreMadeBetweenStartAndStopOnly()
    {
        const QList<std::function<QWidget *(QWidget *)>> makers{
            &make<TBaseFrame>,          &make<TfraHeader>,        &make<TfraPageHeader>,
            &make<TfraToolBar>,         &make<TfraElmtLabelEdit>, &make<TfraElmtRadioButtonInteger>,
            &make<TfraInvestorDetails>, &make<TfraTreeView>,      &make<TfraFundAllocation>,
            &make<TfraFundSelector>,    &make<TfraBaseNavBar>,    &make<TfrmBaseProductEditor>,
            &make<TfrmFundSelector>,    &make<DerivedFrame>};
        const auto allRefused = [&makers] {
            QWidget page;
            for (const auto &maker : makers) {
                for (QWidget *parent : {static_cast<QWidget *>(nullptr), &page}) {
                    const QString error = messageOf<Exception>([&] { delete maker(parent); });
                    if (!error.contains("Call Initialize before the first frame"_L1))
                        return error;
                }
            }
            return QApplication::allWidgets().size() == 1 && page.children().isEmpty()
                       ? QString()
                       : u"something is left"_s;
        };
        QCOMPARE(allRefused(), QString());
        Initialize();
        for (const auto &maker : makers)
            delete maker(nullptr);
        QCOMPARE(Finalize(), ZEL_OK);
        QCOMPARE(allRefused(), QString());
        // A tool that only inspects the classes can create them at any time.
        for (const TFrameClass &entry : FrameClasses())
            delete entry.Create(nullptr);
        QCOMPARE(allRefused(), QString());
    }

    // Running the unit table starts the package, too.
    void theUnitTableStartsThePackage()
    {
        const TPackageInfoTable *table = GetPackageInfoTable();
        for (int i = 0; i < table->UnitCount; ++i)
            table->UnitInfo[i].Init();
        delete new TfraHeader;
        for (int i = table->UnitCount; i-- > 0;)
            table->UnitInfo[i].Final();
        QVERIFY_THROWS_EXCEPTION(Exception, TfraHeader());
    }

    void thePackageStaysWhileAFrameIsAlive()
    {
        Initialize();
        const auto refused = [](const char *className) {
            return Finalize() == ZEL_FRAMES_ALIVE && GetUnitCounter(0) == -1 &&
                   QString::fromUtf8(ZelLastError()).contains(QLatin1String(className));
        };
        QWidget page;
        auto header = std::make_unique<TfraHeader>();
        QVERIFY(refused("TfraHeader"));
        header.reset();
        auto *element = new TfraElmtLabelEdit(&page);
        QVERIFY(refused("TfraElmtLabelEdit"));
        delete element;
        auto derived = std::make_unique<DerivedFrame>();
        QVERIFY(refused("DerivedFrame"));
        derived.reset();
        // A form counts until its deferred deletion has run.
        (new TfrmFundSelector)->deleteLater();
        QVERIFY(refused("Tfr"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(Finalize(), ZEL_OK); // the page itself is not an object of the package
    }

    void anUnknownNameAndAPackageNotStartedAreRefused()
    {
        const QString before = errorOf(u"TfraHeader"_s);
        QVERIFY2(before.contains("not initialised"_L1), qPrintable(before));
        Initialize();
        QVERIFY(errorOf(u"TfraHeader"_s).isEmpty());
        for (const QString &name : {u"TfraNothing"_s, u"tfraheader"_s, QString(), u"TfraHeade"_s, u"ZZ"_s}) {
            const QString error = errorOf(name);
            QVERIFY2(error.contains("no class"_L1) && error.contains(name), qPrintable(error));
        }
        Finalize();
        QVERIFY(errorOf(u"TfraHeader"_s).contains("not initialised"_L1));
    }
};

ZEL_TEST_MAIN_NOT_STARTED(tst_classes)
#include "tst_classes.moc"
