#include "ZelTest.h"
// labels: postgresql slow

#include "DeskWindow.h"
#include "StoreTesting.h"

#include "database/LineCutter.h"
#include "desk/ClientsPage.h"
#include "desk/DeletedQuotes.h"
#include "desk/ErrorDialog.h"
#include "desk/RecoveryDialog.h"
#include "store/DraftKeeper.h"

#include "package/ZelCommonFrames.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QLocale>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

using namespace StoreTesting;

namespace
{

constexpr int Patience = 30'000; // milliseconds

/// Counts the rounds of the event loop, to show that nothing blocks it.
class Pulse
{
public:
    Pulse()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { ++m_beats; });
        m_timer.start(5);
    }
    /// Whether it counts many more rounds from now on.
    bool goesOn() const
    {
        const int from = m_beats;
        return QTest::qWaitFor([this, from] { return m_beats >= from + 50; }, Patience);
    }

private:
    QTimer m_timer;
    int m_beats = 0;
};

void click(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

} // namespace

/// A server that keeps its connections open and does not answer.
class SilentServer : public ZelTest
{
    Q_OBJECT
public:
    explicit SilentServer(PostgresServer &server) : m_server(server) {}

private Q_SLOTS:
    void init() override;
    void cleanup();

    void theLineHasLimits();
    void answersComeInTheOrderOfTheQuestions();
    void aWaitIsCut();
    void aCutSaveIsFoundAgain();
    void aCutDraftDoesNotComeBack();
    void aClientSavedTwiceIsOneClient();
    void aSessionThatDoesNotEndIsEnded();
    void aSilentServerIsNotOpened();
    void theWorkerGoesWithoutAnAnswer();

    void typingGoesOn();
    void aDraftOfACrashIsOffered();
    void aLateSaveIsMadeOnce();
    void aSaveThatIsGivenUpIsMadeOnce();
    void closingDoesNotWaitForASave();
    void thePageClosesOnceItsQuoteIsSaved();
    void aQuoteIsOpenedWhenItHasCome();
    void aCommandCanBeGivenUp();
    void theCatalogueIsACopy();
    void theBinIsShared();

private:
    /// The number of drafts in the file on this computer and on the server.
    int draftsHere() const;
    int draftsOnServer() const;
    static QuoteEditor *open(DeskWindow &desk, qint64 quoteID);
    static void type(DeskWindow &desk, const QString &text);
    static bool saysSilent(const DeskWindow &desk);

    PostgresServer &m_server;
    QTemporaryDir m_folder;
    std::unique_ptr<QTemporaryDir> m_home;
    StoreLocation m_location;
    int m_count = 0;
};

void SilentServer::init()
{
    ZelTest::init();
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", m_home->path().toLocal8Bit());
    m_location = newDatabase(&m_server, m_folder, u"silent%1"_s.arg(++m_count));
}

void SilentServer::cleanup()
{
    m_server.GoOn();
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

int SilentServer::draftsHere() const
{
    const QDir folder = QFileInfo(StoreLocation::inUserData().file).absoluteDir();
    const QStringList files = folder.entryList({u"drafts-*.db"_s}, QDir::Files);
    if (files.isEmpty())
        return 0;
    const RawConnection raw(StoreLocation::fromText(folder.filePath(files.constFirst())));
    return raw.run(u"SELECT count(*) FROM drafts"_s).toInt();
}

int SilentServer::draftsOnServer() const
{
    return RawConnection(m_location).run(u"SELECT count(*) FROM drafts"_s).toInt();
}

QuoteEditor *SilentServer::open(DeskWindow &desk, qint64 quoteID)
{
    desk.window->quotes().open(quoteID);
    desk.settle();
    return desk.window->currentEditor();
}

void SilentServer::type(DeskWindow &desk, const QString &text)
{
    QLineEdit *const description = desk.window->currentEditor()->form()->edtDescription;
    description->setFocus();
    description->selectAll();
    desk.type(text);
}

bool SilentServer::saysSilent(const DeskWindow &desk)
{
    const QList<Banner *> &banners = desk.window->banners->banners();
    return std::any_of(banners.cbegin(), banners.cend(), [](const Banner *banner) {
        return banner->isVisible() &&
               banner->content().text.startsWith(u"The office's server does not answer."_s);
    });
}

// --- the worker

void SilentServer::theLineHasLimits()
{
    const auto store = QuoteStore::open(m_location);
    QCOMPARE(store->database().single(u"SHOW statement_timeout"_s).toString(), u"1min"_s);
    QCOMPARE(store->database().single(u"SHOW lock_timeout"_s).toString(), u"10s"_s);
    const QString options = QSqlDatabase::database(store->connectionName()).connectOptions();
    for (const char *limit : {"connect_timeout=5", "keepalives=1", "keepalives_idle=10", "keepalives_count=3",
                              "tcp_user_timeout=15000"})
        QVERIFY2(options.split(u';').contains(QLatin1StringView(limit)), qPrintable(options));
    // A statement that takes too long is reported with a message.
    store->database().run(u"SET statement_timeout TO 50"_s);
    const QString message = storeErrorOf([&] { store->database().run(u"SELECT pg_sleep(60)"_s); });
    QVERIFY2(message.endsWith(u"The server has taken too long. Try again in a moment."_s),
             qPrintable(message));
}

void SilentServer::answersComeInTheOrderOfTheQuestions()
{
    StoreWorker worker(m_location);
    QVERIFY(!worker.isDirect());
    QStringList answers;
    QObject receiver;
    for (int number = 1; number <= 3; ++number) {
        worker.ask(
            &receiver,
            [number](QuoteStore &store) {
                Quote quote = numberedQuote(number, 3);
                store.save(quote);
                return quote.description;
            },
            [&answers](std::future<QString> answer) { answers.append(answer.get()); });
    }
    QVERIFY(answers.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(answers.size(), 3, Patience);
    QCOMPARE(answers.join(u' '), u"Number 1 Number 2 Number 3"_s);
    // Errors are answers, too.
    QVERIFY(!storeErrorOf([&] { worker.wait([](QuoteStore &store) { store.quote(4711); }); }).isEmpty());
    QVERIFY(worker.isAnswering());
    // An answer for a destroyed object is dropped.
    {
        QObject gone;
        worker.ask(
            &gone, [](QuoteStore &store) { return store.quotes(); },
            [&answers](const std::future<QList<QuoteSummary>> &) { answers.append(QString()); });
    }
    QCOMPARE(worker.wait([](QuoteStore &store) { return store.quotes().size(); }), 3);
    QCoreApplication::processEvents();
    QCOMPARE(answers.size(), 3);
}

void SilentServer::aWaitIsCut()
{
    StoreWorker worker(m_location);
    QSignalSpy states(&worker, &StoreWorker::answering);
    QVERIFY(m_server.Pause());
    const Pulse pulse;
    QStringList answers;
    for (int question = 0; question < 3; ++question) {
        worker.ask(
            &worker, [](QuoteStore &store) { return store.quotes(); },
            [&answers](std::future<QList<QuoteSummary>> answer) {
                try {
                    answer.get();
                    answers.append(QString());
                } catch (const StoreUnreachable &error) {
                    answers.append(error.message());
                }
            },
            1500);
    }
    QVERIFY(pulse.goesOn());
    QTRY_COMPARE_WITH_TIMEOUT(answers.size(), 3, Patience);
    QVERIFY2(answers.constLast().endsWith(u" does not answer. Check the network, then try again."_s),
             qPrintable(answers.constLast()));
    QVERIFY(!worker.isAnswering());
    QCOMPARE(states.size(), 1);
    m_server.GoOn();
    const auto answersAgain = [&worker] {
        try {
            worker.wait([](QuoteStore &store) { return store.quotes(); });
            return true;
        } catch (const StoreUnreachable &) {
            return false;
        }
    };
    QTRY_VERIFY_WITH_TIMEOUT(answersAgain(), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(worker.isAnswering(), Patience);
    QCOMPARE(states.size(), 2);
}

/// Repeats a question until it is answered: questions that wait behind a cancelled one fail with it.
template <typename Question> static auto answerOf(StoreWorker &worker, const Question &question)
{
    const QDeadlineTimer limit(Patience);
    for (;;) {
        try {
            return worker.wait(question);
        } catch (const StoreUnreachable &) {
            if (limit.hasExpired())
                throw;
        }
        QTest::qWait(20);
    }
}

void SilentServer::aCutSaveIsFoundAgain()
{
    StoreWorker worker(m_location);
    const RawConnection raw(m_location);
    const auto commitsWait = [&raw](bool wait) {
        raw.run(u"ALTER SYSTEM SET synchronous_standby_names TO '%1'"_s.arg(
            QLatin1StringView(wait ? "nobody" : "")));
        raw.run(u"SELECT pg_reload_conf()"_s);
    };
    const auto back = qScopeGuard([&] { commitsWait(false); });
    raw.run(u"SET synchronous_commit TO off"_s);
    // From now on commits wait for a standby server that does not exist, although the data is committed here.
    commitsWait(true);
    Quote quote = numberedQuote(1, 20);
    quote.saveKey = QuoteStore::newSaveKey();
    const auto save = [quote](QuoteStore &store) {
        Quote saved = quote;
        store.save(saved);
        return saved;
    };
    QTRY_COMPARE_WITH_TIMEOUT(raw.run(u"SHOW synchronous_standby_names"_s).toString(), u"nobody"_s, Patience);
    QVERIFY_THROWS_EXCEPTION(StoreUnreachable, worker.wait(save, 1500));
    commitsWait(false);
    // Saving again makes neither a second quote nor a conflict with the first attempt.
    const Quote saved = answerOf(worker, save);
    QCOMPARE(saved.revision, 2);
    QVERIFY(saved.saveKey.isEmpty());
    QCOMPARE(worker.wait([](QuoteStore &store) { return store.quotes().size(); }), 1);
    QVERIFY(worker.wait([&](QuoteStore &store) { return store.quote(saved.quoteID); }) == saved);
}

void SilentServer::aCutDraftDoesNotComeBack()
{
    StoreWorker worker(m_location);
    const QString key = QuoteStore::newDraftKey();
    for (int round = 0; round < 3; ++round) {
        QVERIFY(m_server.Pause());
        const auto keep = [&](QuoteStore &store) { store.keepDraft(key, numberedQuote(1, 3)); };
        QVERIFY_THROWS_EXCEPTION(StoreUnreachable, worker.wait(keep, 500));
        // When the server continues, it stores the draft that is still in the connection and then deletes it.
        m_server.GoOn();
        answerOf(worker, [&](QuoteStore &store) { store.dropDraft(key); });
        QCOMPARE(draftsOnServer(), 0);
        const RawConnection raw(m_location);
        QCOMPARE(raw.run(u"SELECT count(*) FROM pg_stat_activity WHERE application_name ="
                         " 'QuoteDesk' AND datname = current_database()"_s)
                     .toInt(),
                 1);
    }
}

void SilentServer::aClientSavedTwiceIsOneClient()
{
    const auto store = QuoteStore::open(m_location);
    Client client;
    client.surname = u"Nel"_s;
    client.takenID = store->newClientID();
    Client again = client;
    store->saveClient(client);
    again.firstNames = u"Anna"_s;
    QCOMPARE(store->saveClient(again), client.clientID);
    QCOMPARE(store->clients(), QList<Client>{again});
    QCOMPARE(again.takenID, 0);
    // The same for a duplicated quote.
    Quote quote = numberedQuote(1, 3);
    store->save(quote);
    const QString key = QuoteStore::newSaveKey();
    QCOMPARE(store->duplicate(quote.quoteID, key), store->duplicate(quote.quoteID, key));
    QCOMPARE(store->quotes().size(), 2);
}

void SilentServer::aSessionThatDoesNotEndIsEnded()
{
    const auto store = QuoteStore::open(m_location);
    const RawConnection raw(m_location);
    const QString mark = raw.run(u"SELECT classid || ', ' || objid FROM pg_locks WHERE locktype ="
                                 " 'advisory' AND database = (SELECT oid FROM pg_database WHERE"
                                 " datname = current_database())"_s)
                             .toString();
    // The server does not notice a broken connection, so the old session still holds its lock.
    const RawConnection dead(m_location);
    raw.run(u"SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity"
            " WHERE application_name = 'QuoteDesk'"_s);
    dead.run(u"SELECT pg_advisory_lock(%1)"_s.arg(mark));
    QCOMPARE(storeErrorOf([&] { store->quotes(); }), QString());
}

void SilentServer::aSilentServerIsNotOpened()
{
    QuoteStore::open(m_location);
    QVERIFY(m_server.Pause());
    QVERIFY_THROWS_EXCEPTION(StoreUnreachable, StoreWorker worker(m_location));
}

void SilentServer::theWorkerGoesWithoutAnAnswer()
{
    auto worker = std::make_unique<StoreWorker>(m_location);
    QVERIFY(m_server.Pause());
    int told = 0;
    worker->ask(
        worker.get(), [](QuoteStore &store) { return store.quotes(); },
        [&told](const std::future<QList<QuoteSummary>> &) { ++told; });
    worker.reset();
    QCoreApplication::processEvents();
    QCOMPARE(told, 0);
}

// --- the window

void SilentServer::typingGoesOn()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(desk.client("Nel", "Anna"), 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QuoteEditor *const editor = open(desk, number);
    QVERIFY(editor);
    QVERIFY(!saysSilent(desk));
    type(desk, u"Typed "_s);
    QTRY_COMPARE_WITH_TIMEOUT(draftsOnServer(), 1, Patience);
    QCOMPARE(draftsHere(), 0);

    QVERIFY(m_server.Pause());
    const Pulse pulse;
    desk.type(u"while the server "_s);
    QVERIFY(pulse.goesOn());
    QTRY_VERIFY_WITH_TIMEOUT(saysSilent(desk), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(draftsHere(), 1, Patience);
    desk.type(u"was silent"_s);
    QVERIFY(pulse.goesOn());
    QCOMPARE(editor->form()->edtDescription->text(), u"Typed while the server was silent"_s);
    // Waiting for an answer ends after its time limit; the window stays responsive.
    QTest::qWait(StoreWorker::UsualLimit);
    QVERIFY(saysSilent(desk));
    QVERIFY(pulse.goesOn());

    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(!saysSilent(desk), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(draftsHere(), 0, Patience);
    QCOMPARE(draftsOnServer(), 1);
    QVERIFY(RawConnection(m_location)
                .run(u"SELECT Content FROM drafts"_s)
                .toString()
                .contains(u"Typed while the server was silent"_s));
    // The stored quote is unchanged and is saved once.
    QCOMPARE(desk.store->quote(number).description, u"Stored"_s);
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!editor->isModified(), Patience);
    QCOMPARE(desk.store->quote(number).revision, 2);
    QCOMPARE(desk.store->quotes().size(), 1);
    QCOMPARE(draftsOnServer(), 0);
}

void SilentServer::aDraftOfACrashIsOffered()
{
    qint64 number = 0;
    const QString key = QuoteStore::newDraftKey();
    {
        // A program that ended while the server did not answer: an older draft on the server, a newer one in
        // the local file.
        DeskWindow crashed(m_location);
        number = crashed.quote(0, 1, "Stored", 70000, 12);
        Quote typed = crashed.store->quote(number);
        typed.description = u"Older"_s;
        crashed.store->keepDraft(key, typed);
        DraftKeeper keeper(crashed.worker);
        QTest::qSleep(2); // so that their times differ
        typed.description = u"Newer"_s;
        keeper.keepHere(key, typed);
    }
    QCOMPARE(draftsHere(), 1);
    DeskWindow desk(m_location);
    QVERIFY(desk.show());
    // A server may notice late that its client has ended.
    QTRY_COMPARE_WITH_TIMEOUT(desk.store->abandonedDrafts().size(), 1, Patience);
    QVERIFY(inDialog<RecoveryDialog>(
        [&] {
            desk.window->offerDrafts();
            desk.settle();
        },
        [](RecoveryDialog &dialog) {
            QCOMPARE(dialog.list->topLevelItemCount(), 1);
            click(dialog.findChild<QPushButton *>(u"btnRestore"_s));
        }));
    QTRY_VERIFY_WITH_TIMEOUT(desk.window->currentEditor(), Patience);
    QuoteEditor &editor = *desk.window->currentEditor();
    QCOMPARE(editor.form()->edtDescription->text(), u"Newer"_s);
    // The adopted draft is moved to the server.
    QTRY_COMPARE_WITH_TIMEOUT(draftsHere(), 0, Patience);
    QCOMPARE(draftsOnServer(), 1);
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!editor.isModified(), Patience);
    QCOMPARE(desk.store->quote(number).description, u"Newer"_s);
    QCOMPARE(draftsOnServer(), 0);
}

void SilentServer::aLateSaveIsMadeOnce()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(0, 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QuoteEditor *const editor = open(desk, number);
    QVERIFY(editor);
    type(desk, u"Saved"_s);
    QVERIFY(m_server.Pause());
    const Pulse pulse;
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(editor->isSaving());
    QVERIFY(!editor->form()->actSave->isEnabled());
    QVERIFY(pulse.goesOn());
    // Changes typed during a save are not part of it and are not lost.
    desk.type(u" and more"_s);
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(saysSilent(desk), Patience);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(!editor->isSaving(), Patience);
    QCOMPARE(desk.store->quote(number).description, u"Saved"_s);
    QCOMPARE(desk.store->quote(number).revision, 2);
    QVERIFY(editor->isModified());
    QTRY_COMPARE_WITH_TIMEOUT(draftsOnServer(), 1, Patience);
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!editor->isModified(), Patience);
    QCOMPARE(desk.store->quote(number).description, u"Saved and more"_s);
    QCOMPARE(desk.store->quote(number).revision, 3);
    QTRY_COMPARE_WITH_TIMEOUT(draftsOnServer() + draftsHere(), 0, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(desk.column(QuoteColumn::Description), QStringList{u"Saved and more"_s},
                              Patience);
}

void SilentServer::aSaveThatIsGivenUpIsMadeOnce()
{
    DeskWindow desk(m_location);
    QVERIFY(desk.show());
    Quote fresh;
    fresh.productID = 1;
    fresh.amount = 1000;
    QuoteEditor *const editor = desk.window->quotes().begin(fresh);
    type(desk, u"New"_s);
    QVERIFY(m_server.Pause());
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(desk.banners().contains(u"\"New\" is not saved: "_s), Patience);
    QVERIFY(!editor->isSaving());
    QVERIFY(editor->isModified());
    QTRY_COMPARE_WITH_TIMEOUT(draftsHere(), 1, Patience);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(!saysSilent(desk), Patience);
    QVERIFY(showActive(*desk.window));
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!editor->isModified(), Patience);
    QCOMPARE(desk.store->quotes().size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(draftsOnServer() + draftsHere(), 0, Patience);
}

void SilentServer::closingDoesNotWaitForASave()
{
    {
        DeskWindow desk(m_location);
        QVERIFY(desk.show());
        Quote fresh;
        fresh.productID = 1;
        fresh.amount = 1000;
        desk.window->quotes().begin(fresh);
        type(desk, u"New"_s);
        QVERIFY(m_server.Pause());
        desk.key(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(inDialog<QMessageBox>([&] { desk.window->close(); },
                                      [](QMessageBox &box) {
                                          QVERIFY2(box.text().contains(u"still being saved"_s),
                                                   qPrintable(box.text()));
                                          click(box.findChild<QPushButton *>(u"btnWait"_s));
                                      }));
        QVERIFY(desk.window->isVisible());
        QVERIFY(inDialog<QMessageBox>(
            [&] { desk.window->close(); },
            [](QMessageBox &box) { click(box.findChild<QPushButton *>(u"btnLeave"_s)); }));
        QVERIFY(!desk.window->isVisible());
        // The program ends; the save is in the connection and may or may not reach the server.
        m_server.GoOn();
    }
    QCOMPARE(draftsHere(), 1);
    DeskWindow desk(m_location);
    QVERIFY(desk.show());
    QVERIFY(inDialog<RecoveryDialog>(
        [&] {
            desk.window->offerDrafts();
            desk.settle();
        },
        [](RecoveryDialog &dialog) { click(dialog.findChild<QPushButton *>(u"btnRestore"_s)); }));
    QTRY_VERIFY_WITH_TIMEOUT(desk.window->currentEditor(), Patience);
    QuoteEditor &editor = *desk.window->currentEditor();
    QCOMPARE(editor.form()->edtDescription->text(), u"New"_s);
    QVERIFY(showActive(*desk.window));
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!editor.isModified(), Patience);
    QCOMPARE(desk.store->quotes().size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(draftsOnServer() + draftsHere(), 0, Patience);
}

void SilentServer::thePageClosesOnceItsQuoteIsSaved()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(0, 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QVERIFY(open(desk, number));
    type(desk, u"Saved"_s);
    QVERIFY(m_server.Pause());
    QVERIFY(inDialog<QMessageBox>([&] { desk.window->close(); },
                                  [](QMessageBox &box) { click(box.button(QMessageBox::Save)); }));
    const Pulse pulse;
    QVERIFY(pulse.goesOn());
    QVERIFY(desk.window->isVisible());
    QCOMPARE(desk.openPages(), 1);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(!desk.window->isVisible(), Patience);
    QCOMPARE(desk.store->quote(number).description, u"Saved"_s);
    QCOMPARE(desk.store->quote(number).revision, 2);
}

void SilentServer::aQuoteIsOpenedWhenItHasCome()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(0, 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QVERIFY(m_server.Pause());
    const Pulse pulse;
    desk.list().setFocus();
    desk.key(Qt::Key_Return);
    desk.key(Qt::Key_Return);
    QVERIFY(pulse.goesOn());
    QCOMPARE(desk.openPages(), 0);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(desk.window->currentEditor(), Patience);
    desk.settle();
    QCOMPARE(desk.openPages(), 1);
    QCOMPARE(desk.window->currentEditor()->quote().quoteID, number);
}

void SilentServer::aCommandCanBeGivenUp()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(0, 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QVERIFY(m_server.Pause());
    bool waited = false;
    bool told = false;
    QTimer hand;
    connect(&hand, &QTimer::timeout, &hand, [&] {
        QWidget *const modal = QApplication::activeModalWidget();
        if (auto *const box = qobject_cast<QProgressDialog *>(modal); box && !waited) {
            waited = true;
            click(box->findChild<QPushButton *>());
        } else if (auto *const error = qobject_cast<ErrorDialog *>(modal)) {
            told = true;
            error->reject();
        }
    });
    hand.start(20);
    desk.start().chooseQuote(number);
    desk.window->actDuplicate->trigger();
    QVERIFY(waited);
    QVERIFY(told);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(desk.worker.isAnswering(), Patience);
    desk.settle();
    // Whether or not the first attempt made a copy, asking again leads to one copy.
    desk.window->actDuplicate->trigger();
    desk.settle();
    QCOMPARE(desk.store->quotes().size(), 2);
    QCOMPARE(desk.list().Items().Count(), 2);
}

void SilentServer::theCatalogueIsACopy()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(0, 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    const auto rowsOf = [](const CatalogueDatabase &catalogue) {
        TClientDataSet rows;
        rows.SetData(CatalogueProviders(catalogue).fundPacket(3));
        QStringList result;
        for (; !rows.Eof(); rows.Next()) {
            QStringList line;
            for (int i = 0; i < rows.FieldCount(); ++i)
                line.append(rows.Fields(i)->AsString());
            result.append(line.join(u'|'));
        }
        return result;
    };
    const CatalogueDatabase onServer(desk.store->database());
    QVERIFY(rowsOf(desk.catalogue).size() > 100);
    QCOMPARE(rowsOf(desk.catalogue), rowsOf(onServer));

    // The funds of a quote can be displayed without the server.
    QVERIFY(open(desk, number));
    QVERIFY(m_server.Pause());
    desk.window->currentEditor()->form()->goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY_WITH_TIMEOUT(desk.window->currentEditor()->fundsPage()->isReady(), Patience);
    QCOMPARE(desk.window->currentEditor()->fundsPage()->fraFundAllocation->Get_FundCount(), 1);
    m_server.GoOn();

    // Another user's import appears shortly afterwards.
    QFile file(m_home->filePath(u"own.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n"
               "1,Trusts,2,Group,12,Fund one\r\n");
    file.close();
    CatalogueDatabase(desk.store->database()).importFile(file.fileName());
    QTRY_VERIFY_WITH_TIMEOUT(!desk.catalogue.hasFund(38), Patience);
    QVERIFY(desk.catalogue.hasFund(12));
}

void SilentServer::theBinIsShared()
{
    DeskWindow desk(m_location);
    const qint64 number = desk.quote(desk.client("Nel", "Anna"), 1, "Stored", 70000, 12);
    QVERIFY(desk.show());
    QCOMPARE(desk.list().Items().Count(), 1);
    // A quote deleted by another user leaves the list and can be restored here.
    desk.store->remove(number);
    QTRY_COMPARE_WITH_TIMEOUT(desk.list().Items().Count(), 0, Patience);
    QVERIFY(inDialog<DeletedQuotesDialog>([&desk] { desk.start().actDeleted->trigger(); },
                                          [](DeletedQuotesDialog &dialog) {
                                              QCOMPARE(dialog.list->topLevelItemCount(), 1);
                                              QTest::keyClick(dialog.list, Qt::Key_Return);
                                              QCOMPARE(dialog.list->topLevelItemCount(), 0);
                                              dialog.reject();
                                          }));
    QCOMPARE(desk.start().chosenQuote(), number);
    QCOMPARE(desk.store->quote(number).description, u"Stored"_s);

    // While the server does not answer, a box with a Cancel button is shown.
    desk.store->remove(number);
    QTRY_COMPARE_WITH_TIMEOUT(desk.list().Items().Count(), 0, Patience);
    QVERIFY(m_server.Pause());
    const Pulse pulse;
    bool waited = false;
    bool told = false;
    QTimer hand;
    connect(&hand, &QTimer::timeout, &hand, [&] {
        QWidget *const modal = QApplication::activeModalWidget();
        if (auto *const box = qobject_cast<QProgressDialog *>(modal); box && !waited) {
            waited = pulse.goesOn();
            click(box->findChild<QPushButton *>());
        } else if (auto *const error = qobject_cast<ErrorDialog *>(modal)) {
            told = true;
            error->reject();
        }
    });
    hand.start(20);
    desk.start().actDeleted->trigger();
    QVERIFY(waited);
    QVERIFY(told);
    m_server.GoOn();
    QTRY_VERIFY_WITH_TIMEOUT(desk.worker.isAnswering(), Patience);
}

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    const QApplication app(argc, argv);
    QApplication::setApplicationName(u"zel-test"_s);
    Initialize();
    PostgresServer server;
    if (!server.Start()) {
        qCritical("PostgreSQL does not run: %s", qPrintable(server.Reason()));
        return 1;
    }
    SilentServer test(server);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_silentserver.moc"
