// The library as a host loads it at run time. This program links only Qt.
#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QMetaType>
#include <QTest>
#include <QWidget>

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include <cstring>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
// Copies of the package's declarations; a host without its headers gets the functions by name.
struct TUnitEntry {
    const char *UnitName;
    void (*Init)();
    void (*Final)();
};
struct TPackageInfoTable {
    int UnitCount;
    const TUnitEntry *UnitInfo;
};

qsizetype entriesOf(const char *folder)
{
    return QDir(QString::fromLatin1(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
}

// Process-wide state that loading a library could change.
struct Observed {
    QStringList resources = QDir(u":/"_s).entryList();
    QString locale = QLocale().name();
    QString organization = QCoreApplication::organizationName();
    QStringList libraryPaths = QCoreApplication::libraryPaths();
    QFont font = QApplication::font();
    QPalette palette = QApplication::palette();
    QString styleSheet = qApp->styleSheet();
    qsizetype widgets = QApplication::allWidgets().size();
    qsizetype children = qApp->children().size();
    bool cursor = QApplication::overrideCursor() != nullptr;
    qsizetype threads = entriesOf("/proc/self/task");
    qsizetype openFiles = entriesOf("/proc/self/fd");
    QByteArray workingFolder = QDir::currentPath().toLocal8Bit();
    bool typeKnown =
        QMetaType::fromName("Currency").isValid() || QMetaType::fromName("TfraFundAllocation*").isValid();
    bool operator==(const Observed &) const = default;
};

class Library
{
public:
    Library() : m_handle(dlopen(ZEL_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {}
    ~Library()
    {
        if (m_handle)
            dlclose(m_handle);
    }
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;
    explicit operator bool() const { return m_handle; }
    template <typename Function> Function *find(const char *name) const
    {
        return reinterpret_cast<Function *>(dlsym(m_handle, name));
    }

private:
    void *m_handle;
};

bool isLoaded()
{
    if (void *handle = dlopen(ZEL_LIBRARY, RTLD_NOW | RTLD_NOLOAD)) {
        dlclose(handle);
        return true;
    }
    return false;
}
} // namespace

class tst_load : public QObject
{
    Q_OBJECT
    static void useOnce()
    {
        const Library library;
        QVERIFY2(library, dlerror());
        auto *initialize = library.find<void()>("Initialize");
        auto *finalize = library.find<void()>("Finalize");
        auto *create = library.find<QWidget *(const QString &, QWidget *)>("CreateByClassName");
        auto *table = library.find<const TPackageInfoTable *()>("GetPackageInfoTable");
        QVERIFY(initialize && finalize && create && table);
        initialize();
        QCOMPARE(table()->UnitCount, 28);
        for (const char *name : names) {
            const std::unique_ptr<QWidget> made(create(QString::fromLatin1(name), nullptr));
            QCOMPARE(made->metaObject()->className(), name);
        }
        // Releases what was posted to the deleted frames, as a running event loop does.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        finalize();
    }

    static constexpr const char *names[] = {
        "TBaseFrame",
        "TfraBaseNavBar",
        "TfraElmtCheckBoxDouble",
        "TfraElmtLabelComboBox",
        "TfraElmtLabelDouble",
        "TfraElmtLabelEdit",
        "TfraElmtLabelInteger",
        "TfraElmtLabelMaskedEdit",
        "TfraElmtLabelPictureField",
        "TfraElmtRadioButtonInteger",
        "TfraElmtRadioButtonMaskedEdit",
        "TfraElmtRadioButtonPictureField",
        "TfraEmltRadioButtonDouble",
        "TfraFundAllocation",
        "TfraFundSelector",
        "TfraFundToolBar",
        "TfraFundsSelectedListView",
        "TfraFundsTreeView",
        "TfraHeader",
        "TfraInvestorDetails",
        "TfraPageHeader",
        "TfraToolBar",
        "TfraTreeView",
        "TfrmBaseProductEditor",
        "TfrmFundSelector",
    };

private Q_SLOTS:
    void nothingIsObservableBeforeInitialize()
    {
        const Observed before;
        const Library library;
        QVERIFY2(library, dlerror());
        const Observed after;
        QVERIFY(before == after);
        auto *counter = library.find<int(int)>("GetUnitCounter");
        auto *table = library.find<const TPackageInfoTable *()>("GetPackageInfoTable");
        QVERIFY(counter && table);
        for (int i = 0; i < table()->UnitCount; ++i)
            QCOMPARE(counter(i), 0);
    }

    void usedAHundredTimesItDoesNotGrow()
    {
        // The first rounds fill Qt's permanent caches (fonts, pictures, the event queue's memory).
        for (int i = 0; i < 200; ++i)
            useOnce();
        const auto before = mallinfo2().uordblks;
        for (int i = 0; i < 100; ++i)
            useOnce();
        const auto after = mallinfo2().uordblks;
        const auto grown = after > before ? after - before : 0;
        QVERIFY2(!isLoaded(), "something keeps the library in the process");
        QVERIFY2(grown < 100 * 64, qPrintable(QString::number(grown)));
    }
};

QTEST_MAIN(tst_load)
#include "tst_load.moc"
