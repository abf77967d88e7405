#include "ZelTest.h"
// labels: postgresql slow

#include "Child.h"
#include "StoreTesting.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QLocale>
#include <QRandomGenerator>

#include <atomic>

#include <sys/mman.h>

using namespace Qt::StringLiterals;

using namespace StoreTesting;

namespace
{

constexpr int Patience = 30'000; // milliseconds

/// Two numbers in memory shared between a process and its forks.
class SharedNumbers
{
public:
    SharedNumbers()
        : m_memory(mmap(nullptr, sizeof(Numbers), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (m_memory == MAP_FAILED)
            qFatal("No shared memory");
        m_numbers = new (m_memory) Numbers;
    }
    ~SharedNumbers() { munmap(m_memory, sizeof(Numbers)); }
    Q_DISABLE_COPY_MOVE(SharedNumbers)

    std::atomic<int> &begun() const { return m_numbers->begun; }
    std::atomic<int> &done() const { return m_numbers->done; }

private:
    struct Numbers {
        std::atomic<int> begun = 0;
        std::atomic<int> done = 0;
    };
    void *m_memory;
    Numbers *m_numbers;
};

} // namespace

/// Quotes and drafts when programs end at the wrong moment or run side by side, on a file and on a server.
class ProgramFaults : public ZelTest
{
    Q_OBJECT
public:
    /// Without @p server the tests run on SQLite.
    explicit ProgramFaults(const PostgresServer *server) : m_server(server) {}

private Q_SLOTS:
    void init() override;
    void cleanup();

    void killedAtAnyMomentOfASave();
    void killedAtAnyMomentOfTyping();
    void twoProgramsOnOneDatabase();
    void theSecondProgramSeesTheFirst();

private:
    std::unique_ptr<QuoteStore> open() const { return QuoteStore::open(m_location); }

    const PostgresServer *m_server;
    QTemporaryDir m_folder;
    StoreLocation m_location;
    int m_count = 0;
};

void ProgramFaults::init()
{
    ZelTest::init();
    m_location = newDatabase(m_server, m_folder, u"faults%1"_s.arg(++m_count));
}

void ProgramFaults::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void ProgramFaults::killedAtAnyMomentOfASave()
{
    // On a server its own processes write, and these are not killed here; so fewer kills suffice.
    const int kills = m_server ? 60 : 200;
    Quote quote = numberedQuote(1, 120);
    open()->save(quote);
    const SharedNumbers numbers;
    numbers.begun() = numbers.done() = 1;
    QRandomGenerator random(20261121);
    int inTheMiddle = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const int before = numbers.done();
        Child child([&] {
            const auto store = open();
            for (;;) {
                const int number = numbers.begun() + 1;
                Quote next = numberedQuote(number, 80 + number % 80);
                next.quoteID = quote.quoteID;
                numbers.begun() = number;
                store->save(next, SaveMode::Overwrite);
                numbers.done() = number;
            }
        });
        const QDeadlineTimer limit(Patience);
        while (numbers.done() == before && !limit.hasExpired() && child.isRunning())
            usleep(200);
        QVERIFY(numbers.done() > before);
        usleep(static_cast<useconds_t>(random.bounded(15'000)));
        child.kill();
        inTheMiddle += numbers.begun() != numbers.done() ? 1 : 0;

        const auto store = open();
        const int found = numberOf(store->quote(quote.quoteID));
        QVERIFY2(found == numbers.done() || found == numbers.begun(),
                 qPrintable(u"%1: %2 after %3, %4 under way"_s.arg(kill)
                                .arg(found)
                                .arg(numbers.done())
                                .arg(numbers.begun())));
        QCOMPARE(store->quotes().size(), 1);
        // The next round continues from this number.
        numbers.done() = numbers.begun().load();
    }
    qInfo("%d of %d were killed in the middle of a save, %d saves in all", inTheMiddle, kills,
          numbers.done().load());
    QVERIFY(inTheMiddle > kills / 2);
    if (!m_server) {
        // The next program removes the files that marked killed programs as running.
        open();
        const QDir folder(m_folder.path(), QFileInfo(m_location.file).fileName() + u".running-*"_s);
        QCOMPARE(folder.entryList(), QStringList());
        const RawConnection raw(m_location);
        QCOMPARE(raw.run(u"PRAGMA integrity_check"_s).toString(), u"ok"_s);
    }
}

void ProgramFaults::killedAtAnyMomentOfTyping()
{
    constexpr int Kills = 25;
    const QString key = QuoteStore::newDraftKey();
    open();
    const SharedNumbers numbers;
    QRandomGenerator random(7);
    for (int kill = 0; kill < Kills; ++kill) {
        const int before = numbers.done();
        Child child([&] {
            const auto store = open();
            for (;;) {
                const int number = numbers.begun() + 1;
                numbers.begun() = number;
                store->keepDraft(key, numberedQuote(number, 30));
                numbers.done() = number;
            }
        });
        const QDeadlineTimer limit(Patience);
        while (numbers.done() == before && !limit.hasExpired() && child.isRunning())
            usleep(200);
        usleep(static_cast<useconds_t>(random.bounded(8'000)));
        child.kill();

        const auto store = open();
        // A server may notice late that its client has ended.
        QTRY_COMPARE_WITH_TIMEOUT(store->abandonedDrafts().size(), 1, Patience);
        const int found = numberOf(store->adoptDraft(key));
        QVERIFY(found == numbers.done() || found == numbers.begun());
        numbers.done() = numbers.begun().load();
    }
}

void ProgramFaults::twoProgramsOnOneDatabase()
{
    constexpr int Rounds = 25;
    Quote shared = numberedQuote(1, 20);
    open()->save(shared);
    const auto work = [&](int first) {
        const auto store = open();
        Quote own = numberedQuote(first, 20);
        for (int round = 0; round < Rounds; ++round) {
            Quote next = numberedQuote(first + round, 20);
            next.quoteID = own.quoteID;
            next.revision = own.revision;
            store->save(next);
            own = next;
            // Every conflict on the shared quote is reported.
            for (bool saved = false; !saved;) {
                Quote ours = numberedQuote(first + round, 20);
                ours.quoteID = shared.quoteID;
                ours.revision = store->quote(shared.quoteID).revision;
                try {
                    store->save(ours);
                    saved = true;
                } catch (const QuoteChangedElsewhere &) {
                }
            }
        }
    };
    Child one([&] { work(10'000); });
    Child other([&] { work(20'000); });
    QVERIFY(one.wait());
    QVERIFY(other.wait());
    const auto store = open();
    QCOMPARE(store->quotes().size(), 3);
    QCOMPARE(store->quote(shared.quoteID).revision, 1 + 2 * Rounds);
    for (const QuoteSummary &summary : store->quotes())
        QVERIFY(numberOf(store->quote(summary.quoteID)) % 10'000 == Rounds - 1);
}

void ProgramFaults::theSecondProgramSeesTheFirst()
{
    const QString key = QuoteStore::newDraftKey();
    open();
    const SharedNumbers numbers;
    Child first([&] {
        const auto store = open();
        store->keepDraft(key, numberedQuote(5, 3));
        Quote removed = numberedQuote(6, 3);
        store->save(removed);
        store->remove(removed.quoteID);
        numbers.done() = 1;
        pause();
    });
    const QDeadlineTimer limit(Patience);
    while (numbers.done() == 0 && !limit.hasExpired() && first.isRunning())
        usleep(200);
    {
        // While the first program runs, nobody else gets its drafts. The quote that it deleted is in
        // everybody's bin.
        const auto second = open();
        QCOMPARE(second->abandonedDrafts().size(), 0);
        QVERIFY(!storeErrorOf([&] { second->adoptDraft(key); }).isEmpty());
        QCOMPARE(second->database().single(u"SELECT count(*) FROM quotes"_s).toInt(), 1);
        QCOMPARE(second->quotes().size(), 0);
        QCOMPARE(second->deletedQuotes().size(), 1);
    }
    first.kill();
    QTRY_COMPARE_WITH_TIMEOUT(open()->abandonedDrafts().size(), 1, Patience);
    const auto third = open();
    QCOMPARE(third->deletedQuotes().size(), 1);
    const qint64 removed = third->deletedQuotes().constFirst().quote.quoteID;
    third->restore(removed);
    QCOMPARE(numberOf(third->quote(removed)), 6);
    QCOMPARE(numberOf(third->adoptDraft(key)), 5);
}

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    const QApplication app(argc, argv);
    QApplication::setApplicationName(u"zel-test"_s);
    PostgresServer server;
    if (!server.Start()) {
        qCritical("PostgreSQL does not run: %s", qPrintable(server.Reason()));
        return 1;
    }
    ProgramFaults onFile(nullptr);
    ProgramFaults onServer(&server);
    const int failures = QTest::qExec(&onFile, argc, argv) + QTest::qExec(&onServer, argc, argv);
    return failures == 0 ? 0 : 1;
}
#include "tst_storeprograms.moc"
