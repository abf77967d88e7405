#include "ZelTest.h"
// labels: postgresql slow
// left out on Windows: what runs on PostgreSQL

#include "StoreTesting.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"

#include "data/ClientDataSet.h"
#include "data/SqlDataSets.h"

#include <QLocale>
#include <QScopeGuard>

#include <thread>

using namespace StoreTesting;

namespace
{

QByteArray catalogueOf(int funds)
{
    QByteArray text = "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n";
    for (int fund = 0; fund < funds; ++fund)
        text += QStringLiteral("%1,Type %1,%2,Group %2,%3,Fund with a name of some length %3\r\n")
                    .arg(fund / 5000 + 1)
                    .arg(fund / 100 + 1)
                    .arg(100000 + fund)
                    .toUtf8();
    return text;
}

/// All rows of a packet as texts, the names of the columns without regard to case first.
QStringList rowsOf(const QVariant &packet)
{
    TClientDataSet rows;
    rows.SetData(packet);
    QStringList result;
    QStringList line;
    for (int i = 0; i < rows.FieldCount(); ++i)
        line.append(rows.Fields(i)->FieldName().toLower());
    result.append(line.join(u'|'));
    for (; !rows.Eof(); rows.Next()) {
        line.clear();
        for (int i = 0; i < rows.FieldCount(); ++i)
            line.append(rows.Fields(i)->AsString());
        result.append(line.join(u'|'));
    }
    return result;
}

} // namespace

/// What the store promises, on one engine. Each test has a database of its own.
class StoreSuite : public ZelTest
{
    Q_OBJECT
public:
    /// On SQLite without a server.
    explicit StoreSuite(const PostgresServer *server) : m_server(server) {}

private Q_SLOTS:
    void init() override;
    void cleanup();

    void opensAnEmptyDatabase();
    void savesEveryFieldExactly();
    void savesClients();
    void keepsAClientThatHasQuotes();
    void quotesAsTheListShowsThem();
    void savesOverTheOldQuote();
    void tellsWhenAnotherHasSaved();
    void overwritesOrCopiesWhenAsked();
    void tellsWhenAnotherHasRemoved();
    void removesAndRestores();
    void purgesWhatWasRemoved();
    void duplicates();
    void refusesAClientThatIsGone();
    void refusesATextThatCannotBeKept();
    void draftsOfProgramsThatHaveEnded();
    void savingDropsTheDraft();
    void aDraftIsTakenOnce();
    void draftsDuringOtherWork();
    void noticesChangesOfOthers();
    void twoProgramsAtOnce();
    void upgradesTablesOfVersionOne();
    void refusesNewerTables();
    void datasetsOnTheConnection();
    void catalogueStaysWithTheQuotes();
    void sameCatalogueOnEveryEngine();
    void catalogueWithoutTheProductsFunds();
    void importsManyFunds();
    void quotesOnTheRealCatalogue();

private:
    std::unique_ptr<QuoteStore> open() { return QuoteStore::open(m_location); }
    /// Makes the tables of version 1 as that version made them.
    void makeVersionOne();
    void execute(const QStringList &statements);
    QString write(const QByteArray &content);

    const PostgresServer *m_server;
    QTemporaryDir m_folder;
    StoreLocation m_location;
    int m_count = 0;
};

void StoreSuite::init()
{
    ZelTest::init();
    m_location = newDatabase(m_server, m_folder, QStringLiteral("quotes%1").arg(++m_count));
}

void StoreSuite::cleanup()
{
    // Every store took its connection with it.
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

QString StoreSuite::write(const QByteArray &content)
{
    QFile file(m_folder.filePath(QStringLiteral("catalogue%1.csv").arg(m_count)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test's file cannot be written");
    return file.fileName();
}

void StoreSuite::execute(const QStringList &statements)
{
    const RawConnection raw(m_location);
    for (const QString &statement : statements)
        raw.run(statement);
}

void StoreSuite::opensAnEmptyDatabase()
{
    const auto store = open();
    QCOMPARE(store->quotes(), QList<QuoteSummary>());
    QCOMPARE(store->clients(), QList<Client>());
    QCOMPARE(store->abandonedDrafts().size(), 0);
    QVERIFY(!store->changedElsewhere());
    QCOMPARE(store->database().single(QStringLiteral("SELECT Version FROM schema_version")).toInt(), 2);
    const CatalogueDatabase catalogue(store->database());
    QCOMPARE(catalogue.products().size(), 3);
    QVERIFY(catalogue.hasFund(12));
    QCOMPARE(catalogue.products().constFirst().nameAfrikaans,
             QString::fromUtf8("Horison Uittreeannu\xc3\xaft\x65it"));
    if (m_server)
        return;
    QCOMPARE(store->database().single(QStringLiteral("PRAGMA journal_mode")).toString(),
             QStringLiteral("wal"));
    QCOMPARE(store->database().single(QStringLiteral("PRAGMA synchronous")).toInt(), 2);
    QCOMPARE(store->database().single(QStringLiteral("PRAGMA foreign_keys")).toInt(), 1);
}

void StoreSuite::savesEveryFieldExactly()
{
    Quote quote;
    quote.productID = 2;
    quote.description = QString::fromUtf8("O'Brien's \"plan\" \\ caf\xc3\xa9 \xf0\x9f\x92\xb0 ?\n100 %; --");
    quote.amount = money("9999999999.9999");
    quote.byAmount = true;
    quote.details = {{QStringLiteral("edTerm"), QStringLiteral("10")},
                     {QStringLiteral("edNote"), QString()},
                     {QStringLiteral("it's ?"), QStringLiteral("$1 :a ?")}};
    quote.asked = {true, false, true, false};
    // The same fund twice, as it can stand in two groups, and amounts that no double holds.
    quote.funds = {{12, QStringLiteral("Karoo Equity Fund"), money("0.0001"), money("33.3333")},
                   {38, QString(), Currency::max(), money("-0.0001")},
                   {12, QStringLiteral("Karoo Equity Fund"), Currency::min(), money("100")},
                   {7, QStringLiteral("x"), money("900719925474.0993"), Currency()}};
    quote.funds[1].name = QStringLiteral("");

    const QDateTime before = QDateTime::currentDateTimeUtc();
    Quote saved = quote;
    qint64 id = 0;
    {
        const auto store = open();
        Client client{0, QStringLiteral("Botha"), QStringLiteral("Maria"), {}, {}, {}, {}};
        saved.clientID = quote.clientID = store->saveClient(client);
        id = store->save(saved);
        QCOMPARE(saved.quoteID, id);
        QVERIFY(id > 0);
        QCOMPARE(saved.revision, 1);
        QVERIFY(saved.changed >= before && saved.changed <= QDateTime::currentDateTimeUtc());
        QVERIFY(!saved.changedBy.isEmpty());
        QCOMPARE(saved.saveKey, QString());
        QVERIFY(store->quote(id) == saved);
    }
    // And after the program has ended.
    const Quote read = open()->quote(id);
    QVERIFY(read == saved);
    quote.quoteID = id;
    quote.revision = 1;
    quote.changed = saved.changed;
    quote.changedBy = saved.changedBy;
    QVERIFY(read == quote);
}

void StoreSuite::savesClients()
{
    const auto store = open();
    Client botha{0,
                 QStringLiteral("Botha"),
                 QStringLiteral("Maria Elizabeth"),
                 QStringLiteral("8001015009087"),
                 QDate(1980, 1, 1),
                 QStringLiteral("m@botha.example"),
                 QStringLiteral("+27 21 555 0101")};
    Client adams{0, QStringLiteral("Adams"), {}, {}, {}, {}, {}};
    const qint64 id = store->saveClient(botha);
    QCOMPARE(botha.clientID, id);
    QVERIFY(store->saveClient(adams) != id);
    QCOMPARE(store->clients(), (QList<Client>{adams, botha}));
    QCOMPARE(store->client(id), botha);

    botha.surname = QStringLiteral("Aaron");
    botha.dateOfBirth = {};
    QCOMPARE(store->saveClient(botha), id);
    QCOMPARE(open()->clients(), (QList<Client>{botha, adams}));

    // Where people look for it, not behind the Z.
    Client deVilliers{0, QStringLiteral("de Villiers"), QStringLiteral("Jan"), {}, {}, {}, {}};
    Client zulu{0, QStringLiteral("Zulu"), {}, {}, {}, {}, {}};
    Client anna{0, QStringLiteral("De Villiers"), QStringLiteral("Anna"), {}, {}, {}, {}};
    for (Client *const client : {&zulu, &deVilliers, &anna})
        store->saveClient(*client);
    QCOMPARE(store->clients(), (QList<Client>{botha, adams, anna, deVilliers, zulu}));
    for (const Client &client : {deVilliers, zulu, anna})
        store->removeClient(client.clientID);

    store->removeClient(id);
    QCOMPARE(store->clients(), QList<Client>{adams});
    QCOMPARE(storeErrorOf([&] { store->saveClient(botha); }),
             QStringLiteral("The client is no longer there; somebody else has removed it."));
    QVERIFY(!storeErrorOf([&] { store->client(id); }).isEmpty());
}

void StoreSuite::keepsAClientThatHasQuotes()
{
    const auto store = open();
    Client client{0, QStringLiteral("Botha"), {}, {}, {}, {}, {}};
    Quote quote = numberedQuote(1, 2);
    quote.clientID = store->saveClient(client);
    store->save(quote);
    const auto remove = [&] { store->removeClient(client.clientID); };
    const QString refused = QStringLiteral("The client cannot be removed while there are quotes for it.");
    QCOMPARE(storeErrorOf(remove), refused);
    store->remove(quote.quoteID);
    // No list shows it any more, so what it is waiting for has to be said.
    QVERIFY(storeErrorOf(remove).contains(QStringLiteral("deleted quotes")));
    QCOMPARE(store->clients().size(), 1);
    store->restore(quote.quoteID);
    QCOMPARE(store->quote(quote.quoteID).clientID, client.clientID);
}

void StoreSuite::quotesAsTheListShowsThem()
{
    const auto store = open();
    Client client{0, QStringLiteral("Botha"), QStringLiteral("Maria"), {}, {}, {}, {}};
    Client surnameOnly{0, QStringLiteral("Adams"), {}, {}, {}, {}, {}};
    store->saveClient(client);
    store->saveClient(surnameOnly);
    Quote whole = numberedQuote(1, 3);
    whole.clientID = client.clientID;
    store->save(whole);
    Quote draft = numberedQuote(2, 3);
    draft.clientID = surnameOnly.clientID;
    draft.amount += money("0.0001");
    draft.productID = 3;
    store->save(draft);
    Quote bare;
    bare.productID = 77;
    store->save(bare);

    const auto summary = [](const Quote &quote, const char *product, const char *name, bool allocated) {
        return QuoteSummary{quote.quoteID,
                            quote.productID,
                            QString::fromLatin1(product),
                            quote.clientID,
                            QString::fromLatin1(name),
                            quote.description,
                            quote.amount,
                            allocated,
                            quote.changed,
                            quote.changedBy};
    };
    QList<QuoteSummary> expected{summary(bare, "", "", false),
                                 summary(draft, "Summit Investment Plan", "Adams", false),
                                 summary(whole, "Horizon Retirement Annuity", "Botha, Maria", true)};
    QCOMPARE(store->quotes(), expected);

    // What was saved last comes first.
    QTest::qSleep(2); // their times tell them apart
    store->save(whole);
    expected = {summary(whole, "Horizon Retirement Annuity", "Botha, Maria", true), expected.at(0),
                expected.at(1)};
    QCOMPARE(store->quotes(), expected);
}

void StoreSuite::savesOverTheOldQuote()
{
    const auto store = open();
    Quote quote = numberedQuote(5, 120);
    store->save(quote);
    Quote next = numberedQuote(6, 101);
    next.quoteID = quote.quoteID;
    next.revision = quote.revision;
    QCOMPARE(store->save(next), quote.quoteID);
    QCOMPARE(next.revision, 2);
    QVERIFY(store->quote(quote.quoteID) == next);
    QCOMPARE(numberOf(store->quote(quote.quoteID)), 6);
    QCOMPARE(store->quotes().size(), 1);
}

void StoreSuite::tellsWhenAnotherHasSaved()
{
    const auto ours = open();
    Quote mine = numberedQuote(1, 3);
    ours->save(mine);

    const auto others = open();
    Quote theirs = others->quote(mine.quoteID);
    theirs.description = QStringLiteral("theirs");
    others->save(theirs);

    mine.description = QStringLiteral("mine");
    const Quote before = mine;
    bool told = false;
    try {
        ours->save(mine);
    } catch (const QuoteChangedElsewhere &error) {
        told = true;
        QVERIFY(error.theirs() == theirs);
        QVERIFY(!error.isRemoved());
        QCOMPARE(error.message(),
                 QStringLiteral("The quote has been changed by %1 in the meantime.").arg(theirs.changedBy));
    }
    QVERIFY(told);
    QVERIFY(mine == before);
    QVERIFY(ours->quote(mine.quoteID) == theirs);
}

void StoreSuite::overwritesOrCopiesWhenAsked()
{
    const auto store = open();
    Quote stale = numberedQuote(1, 3);
    store->save(stale);
    Quote theirs = store->quote(stale.quoteID);
    theirs.description = QStringLiteral("theirs");
    store->save(theirs);
    QCOMPARE(theirs.revision, 2);

    Quote copy = stale;
    QVERIFY(store->save(copy, SaveMode::AsCopy) != stale.quoteID);
    QCOMPARE(copy.revision, 1);
    QVERIFY(store->quote(stale.quoteID) == theirs);
    QVERIFY(store->quote(copy.quoteID) == copy);

    QCOMPARE(store->save(stale, SaveMode::Overwrite), theirs.quoteID);
    // Whoever still has the overwritten version is told in turn.
    QCOMPARE(stale.revision, 3);
    QVERIFY(store->quote(stale.quoteID) == stale);
    QVERIFY_THROWS_EXCEPTION(QuoteChangedElsewhere, store->save(theirs));
}

void StoreSuite::tellsWhenAnotherHasRemoved()
{
    const auto ours = open();
    Quote mine = numberedQuote(1, 3);
    ours->save(mine);
    {
        const auto others = open();
        others->remove(mine.quoteID);
        QVERIFY(!storeErrorOf([&] { others->remove(mine.quoteID); }).isEmpty());
        bool removed = false;
        try {
            ours->save(mine);
        } catch (const QuoteChangedElsewhere &error) {
            removed = error.isRemoved();
        }
        QVERIFY(removed);
        QVERIFY(!storeErrorOf([&] { ours->quote(mine.quoteID); }).isEmpty());
        ours->save(mine, SaveMode::Overwrite);
        QVERIFY(others->quote(mine.quoteID) == mine);
        others->remove(mine.quoteID);
    }
    // Now it is gone for good; the person who still has it open can bring it back all the same.
    QVERIFY_THROWS_EXCEPTION(QuoteChangedElsewhere, ours->save(mine));
    const qint64 id = mine.quoteID;
    QCOMPARE(ours->save(mine, SaveMode::Overwrite), id);
    QVERIFY(ours->quote(id) == mine);
}

void StoreSuite::removesAndRestores()
{
    const auto store = open();
    Quote quote = numberedQuote(4, 5);
    store->save(quote);
    store->remove(quote.quoteID);
    QCOMPARE(store->quotes().size(), 0);
    store->restore(quote.quoteID);
    QCOMPARE(store->quotes().size(), 1);
    QVERIFY(store->quote(quote.quoteID) == quote);
    QVERIFY(!storeErrorOf([&] { store->restore(quote.quoteID); }).isEmpty());
    QVERIFY(!storeErrorOf([&] { store->remove(4711); }).isEmpty());
}

void StoreSuite::purgesWhatWasRemoved()
{
    const auto watcher = open();
    const auto rows = [&watcher](const char *table) {
        return watcher->database()
            .single(QStringLiteral("SELECT count(*) FROM ") + QLatin1StringView(table))
            .toInt();
    };
    Quote quote = numberedQuote(4, 5);
    {
        const auto store = open();
        store->save(quote);
        store->remove(quote.quoteID);
        QCOMPARE(rows("quotes"), 1);
    }
    QCOMPARE(rows("quotes"), 0);
    QCOMPARE(rows("quote_funds"), 0);
    QCOMPARE(rows("quote_details"), 0);

    // Removed by a program that crashed before it could purge.
    Quote other = numberedQuote(5, 5);
    watcher->save(other);
    execute({QStringLiteral("UPDATE quotes SET RemovedIn = 999999")});
    open();
    QCOMPARE(rows("quotes"), 0);
}

void StoreSuite::duplicates()
{
    const auto store = open();
    Quote quote = numberedQuote(9, 4);
    store->save(quote);
    const qint64 id = store->duplicate(quote.quoteID);
    QVERIFY(id != quote.quoteID);
    Quote copy = store->quote(id);
    QCOMPARE(copy.description, QStringLiteral("Number 9 (copy)"));
    QCOMPARE(copy.revision, 1);
    QVERIFY(copy.funds == quote.funds && copy.details == quote.details && copy.amount == quote.amount);
    QVERIFY(store->quote(quote.quoteID) == quote);
    QVERIFY(!storeErrorOf([&] { store->duplicate(4711); }).isEmpty());
}

void StoreSuite::refusesAClientThatIsGone()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 2);
    quote.clientID = 4711;
    const Quote before = quote;
    QCOMPARE(storeErrorOf([&] { store->save(quote); }),
             QStringLiteral("The client has been removed by somebody else; choose another one."));
    QVERIFY(quote == before);
    QCOMPARE(store->quotes().size(), 0);
}

void StoreSuite::refusesATextThatCannotBeKept()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 3);
    store->save(quote);
    Quote next = quote;
    next.description = QStringLiteral("Retire") + QChar(u'\0') + QStringLiteral("ment");
    const QString refused =
        QStringLiteral("The text \"Retirement\" has a character in it that no database can keep "
                       "(number 0). Type that text anew.");
    QCOMPARE(storeErrorOf([&] { store->save(next); }), refused);
    // As a draft it is kept as typed.
    store->keepDraft(QuoteStore::newDraftKey(), next);
    QVERIFY(store->quote(quote.quoteID) == quote);
    Client client;
    client.surname = next.description;
    QCOMPARE(storeErrorOf([&] { store->saveClient(client); }), refused);
    QCOMPARE(store->clients().size(), 0);
    next.description = QStringLiteral("Retirement");
    store->save(next);
    QCOMPARE(store->quote(quote.quoteID).description, next.description);
}

void StoreSuite::draftsOfProgramsThatHaveEnded()
{
    const QString key = QuoteStore::newDraftKey();
    QVERIFY(key != QuoteStore::newDraftKey());
    Quote typed = numberedQuote(3, 7);
    typed.asked = {false, true, false, true};
    typed.changed = QDateTime::currentDateTimeUtc();
    typed.changedBy = QStringLiteral("somebody");
    typed.funds[0].amount = Currency::max();
    const auto other = open();
    {
        const auto crashed = open();
        crashed->keepDraft(QuoteStore::newDraftKey(), numberedQuote(1, 1));
        QTest::qSleep(5); // their times tell them apart
        crashed->keepDraft(key, numberedQuote(2, 2));
        crashed->keepDraft(key, typed);
        // It is still running.
        QCOMPARE(other->abandonedDrafts().size(), 0);
        QCOMPARE(crashed->abandonedDrafts().size(), 0);
        crashed->dropDraft(QStringLiteral("no such draft"));
    }
    // A server notices a little later that a program has ended.
    QTRY_COMPARE(other->abandonedDrafts().size(), 2);
    const QList<Draft> drafts = other->abandonedDrafts();
    QCOMPARE(drafts.constFirst().key, key);
    QVERIFY(drafts.constFirst().quote == typed);
    QVERIFY(drafts.constFirst().kept.secsTo(QDateTime::currentDateTimeUtc()) < 60);
    QCOMPARE(numberOf(drafts.constLast().quote), 1);
    other->dropDraft(key);
    QCOMPARE(other->abandonedDrafts().size(), 1);

    // Another person's draft, and one that cannot be read, are not offered and not in the way.
    execute({QStringLiteral("UPDATE drafts SET Person = 'somebody else'")});
    QCOMPARE(other->abandonedDrafts().size(), 0);
    execute({QStringLiteral("INSERT INTO drafts SELECT 'bad', InstanceID, 'x', Kept, '{\"amount\":\"much\"}'"
                            " FROM drafts"),
             QStringLiteral("UPDATE drafts SET Person = '%1'").arg(typed.changedBy)});
    const QByteArray user = qgetenv("USER");
    const auto restore = qScopeGuard([&user] { qputenv("USER", user); });
    qputenv("USER", typed.changedBy.toUtf8());
    QCOMPARE(other->abandonedDrafts().size(), 1);
}

void StoreSuite::savingDropsTheDraft()
{
    const QString key = QuoteStore::newDraftKey();
    {
        const auto store = open();
        Quote quote = numberedQuote(1, 2);
        store->keepDraft(key, quote);
        store->save(quote, SaveMode::OnlyIfUnchanged, key);
    }
    QCOMPARE(open()->abandonedDrafts().size(), 0);
}

void StoreSuite::aDraftIsTakenOnce()
{
    const QString key = QuoteStore::newDraftKey();
    open()->keepDraft(key, numberedQuote(8, 2));
    const auto first = open();
    const auto second = open();
    QTRY_COMPARE(first->abandonedDrafts().size(), 1);
    QCOMPARE(second->abandonedDrafts().size(), 1);
    QCOMPARE(numberOf(first->adoptDraft(key)), 8);
    QVERIFY(!storeErrorOf([&] { second->adoptDraft(key); }).isEmpty());
    QCOMPARE(second->abandonedDrafts().size(), 0);
    first->dropDraft(key);
    QVERIFY(!storeErrorOf([&] { second->adoptDraft(key); }).isEmpty());
}

void StoreSuite::draftsDuringOtherWork()
{
    const QString kept = QuoteStore::newDraftKey();
    const QString dropped = QuoteStore::newDraftKey();
    {
        const auto store = open();
        store->keepDraft(dropped, numberedQuote(1, 1));
        {
            Transaction work(store->database(), Transaction::Write);
            store->database().countChange();
            // Another save is refused in words; what is typed waits.
            Quote quote = numberedQuote(2, 2);
            QCOMPARE(storeErrorOf([&] { store->save(quote); }),
                     QStringLiteral("The database is busy with other work of this program."));
            store->keepDraft(kept, numberedQuote(3, 3));
            store->dropDraft(dropped);
            // Not committed: the work is undone, the drafts are not part of it.
        }
    }
    const auto other = open();
    QTRY_COMPARE(other->abandonedDrafts().size(), 1);
    const QList<Draft> drafts = other->abandonedDrafts();
    QCOMPARE(drafts.constFirst().key, kept);
    QCOMPARE(numberOf(drafts.constFirst().quote), 3);
}

void StoreSuite::noticesChangesOfOthers()
{
    const auto ours = open();
    const auto others = open();
    ours->changedElsewhere();
    QVERIFY(!ours->changedElsewhere());
    Quote quote = numberedQuote(1, 2);
    ours->save(quote);
    ours->remove(quote.quoteID);
    ours->restore(quote.quoteID);
    QVERIFY(!ours->changedElsewhere());
    QVERIFY(others->changedElsewhere());
    QVERIFY(!others->changedElsewhere());
    // What they change before our own change is noticed too.
    Client client{0, QStringLiteral("Botha"), {}, {}, {}, {}, {}};
    others->saveClient(client);
    ours->save(quote);
    QVERIFY(ours->changedElsewhere());
    QVERIFY(!ours->changedElsewhere());
    others->keepDraft(QStringLiteral("a"), quote);
    QVERIFY(!ours->changedElsewhere());
    CatalogueDatabase(others->database()).importFile(write(catalogueOf(5)));
    QVERIFY(ours->changedElsewhere());
}

void StoreSuite::twoProgramsAtOnce()
{
    constexpr int Rounds = 40;
    const auto store = open();
    Quote shared = numberedQuote(1, 20);
    const qint64 sharedID = store->save(shared);
    QString failure;
    const auto work = [sharedID, &failure](QuoteStore &own, int first) {
        try {
            Quote mine = numberedQuote(first, 20);
            for (int round = 0; round < Rounds; ++round) {
                Quote next = numberedQuote(first + round, 20);
                next.quoteID = mine.quoteID;
                next.revision = mine.revision;
                own.save(next);
                mine = next;
                // On the shared quote every clash is told, and saving again from theirs goes through in the
                // end.
                for (bool saved = false; !saved;) {
                    Quote theirs = own.quote(sharedID);
                    Quote ours = numberedQuote(first + round, 20);
                    ours.quoteID = sharedID;
                    ours.revision = theirs.revision;
                    try {
                        own.save(ours);
                        saved = true;
                    } catch (const QuoteChangedElsewhere &error) {
                        if (numberOf(error.theirs()) < 0)
                            failure = QStringLiteral("theirs is not whole");
                    }
                }
            }
            if (mine.revision != Rounds)
                failure = QStringLiteral("revision %1").arg(mine.revision);
        } catch (const StoreError &error) {
            failure = error.message() + error.details();
        }
    };
    std::thread other([this, &work] { work(*open(), 10'000); });
    work(*store, 20'000);
    other.join();
    QCOMPARE(failure, QString());
    QCOMPARE(store->quotes().size(), 3);
    // Not one of the saves was lost.
    QCOMPARE(store->quote(sharedID).revision, 1 + 2 * Rounds);
    for (const QuoteSummary &summary : store->quotes())
        QVERIFY(numberOf(store->quote(summary.quoteID)) >= 10'000);
}

void StoreSuite::makeVersionOne()
{
    QStringList statements{
        QStringLiteral("CREATE TABLE schema_version (Version INTEGER NOT NULL)"),
        QStringLiteral("INSERT INTO schema_version (Version) VALUES (1)"),
        QStringLiteral("CREATE TABLE store_state (ChangeCount BIGINT NOT NULL, LastID BIGINT NOT NULL)"),
        QStringLiteral("INSERT INTO store_state (ChangeCount, LastID) VALUES (17, 6)"),
        QStringLiteral(
            "CREATE TABLE clients (ClientID BIGINT PRIMARY KEY, Surname TEXT NOT NULL, FirstNames TEXT"
            " NOT NULL, IDNumber TEXT NOT NULL, DateOfBirth TEXT NOT NULL, EMail TEXT NOT NULL,"
            " Telephone TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE quotes (QuoteID BIGINT PRIMARY KEY, Revision INTEGER NOT NULL, ProductID"
            " INTEGER NOT NULL, ClientID BIGINT REFERENCES clients (ClientID), Description TEXT NOT"
            " NULL, Amount BIGINT NOT NULL, ByAmount BOOLEAN NOT NULL, AskedWorldOGS BOOLEAN NOT NULL,"
            " AskedOGS BOOLEAN NOT NULL, AskedBulwarkWorld BOOLEAN NOT NULL, AskedWorldOGSInternational"
            " BOOLEAN NOT NULL, Changed TEXT NOT NULL, ChangedBy TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE quote_details (QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE"
            " CASCADE, DetailName TEXT NOT NULL, DetailValue TEXT NOT NULL, PRIMARY KEY (QuoteID,"
            " DetailName))"),
        QStringLiteral(
            "CREATE TABLE quote_funds (QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE"
            " CASCADE, Position INTEGER NOT NULL, FundID INTEGER NOT NULL, FundName TEXT NOT NULL,"
            " Amount BIGINT NOT NULL, FundPercent BIGINT NOT NULL, PRIMARY KEY (QuoteID, Position))"),
        QStringLiteral("CREATE TABLE products (RowNo INTEGER NOT NULL, ProductID INTEGER PRIMARY KEY,"
                       " ProductGroupID INTEGER NOT NULL, ProductName TEXT NOT NULL, ProductName_AFR TEXT NOT"
                       " NULL)"),
        QStringLiteral("CREATE TABLE group_types (RowNo INTEGER NOT NULL, GroupTypeID INTEGER PRIMARY KEY,"
                       " GroupTypeDesc TEXT NOT NULL, GroupTypeDesc_AFR TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE fund_groups (RowNo INTEGER NOT NULL, FundGroupID INTEGER PRIMARY KEY,"
            " GroupTypeID INTEGER NOT NULL REFERENCES group_types (GroupTypeID), FundGroupName TEXT NOT"
            " NULL, FundGroupName_AFR TEXT NOT NULL, ProductGroups TEXT NOT NULL, OfferedBy TEXT NOT"
            " NULL)"),
        QStringLiteral(
            "CREATE TABLE funds (RowNo INTEGER NOT NULL, FundID INTEGER NOT NULL, FundGroupID INTEGER"
            " NOT NULL REFERENCES fund_groups (FundGroupID), FundName TEXT NOT NULL, FundName_AFR TEXT"
            " NOT NULL, MainframeID TEXT NOT NULL, MinimumInitialAmount NUMERIC(15,4) NOT NULL DEFAULT"
            " 0, MinimumSchedAmount NUMERIC(15,4) NOT NULL DEFAULT 0, BuySellRate NUMERIC(15,4) NOT"
            " NULL DEFAULT 0, ManRate NUMERIC(15,4) NOT NULL DEFAULT 0, UnderlyingManRate NUMERIC(15,4)"
            " NOT NULL DEFAULT 0, GuaranteeRate NUMERIC(15,4) NOT NULL DEFAULT 0, TrustRate"
            " NUMERIC(15,4) NOT NULL DEFAULT 0, FundTerm INTEGER NOT NULL DEFAULT 0, InternationalFund"
            " BOOLEAN NOT NULL DEFAULT FALSE, AllowAsGuarantee BOOLEAN NOT NULL DEFAULT FALSE,"
            " Benchmark TEXT NOT NULL DEFAULT '', BenchmarkPerf TEXT NOT NULL DEFAULT '', MinPerfFee"
            " TEXT NOT NULL DEFAULT '', MaxPerfFee TEXT NOT NULL DEFAULT '', FundSheetURL TEXT NOT NULL"
            " DEFAULT '', UNIQUE (FundGroupID, FundID))"),
        QStringLiteral("CREATE INDEX funds_by_id ON funds (FundID)"),
        QStringLiteral(
            "CREATE TABLE fund_messages (RowNo INTEGER NOT NULL, FundGroupID INTEGER NOT NULL"
            " REFERENCES fund_groups (FundGroupID), FundID INTEGER NOT NULL, Question TEXT NOT NULL,"
            " UNIQUE (FundGroupID, FundID))"),
        QStringLiteral(
            "INSERT INTO clients VALUES (1, 'Botha', 'Maria', '80', '1980-01-01', 'm@b.example', '1')"),
        // Whole, not whole, whole with nothing to spread, and without funds.
        QStringLiteral(
            "INSERT INTO quotes VALUES (2, 4, 1, 1, 'whole', 1000000, TRUE, TRUE, FALSE, FALSE, TRUE,"
            " '2026-01-02T03:04:05.678Z', 'maria')"),
        QStringLiteral(
            "INSERT INTO quotes VALUES (3, 1, 2, NULL, 'open', 1000000, FALSE, FALSE, FALSE, FALSE,"
            " FALSE, '2026-01-01T03:04:05.678Z', 'maria')"),
        QStringLiteral(
            "INSERT INTO quotes VALUES (4, 1, 2, NULL, 'bare', 0, FALSE, FALSE, FALSE, FALSE, FALSE,"
            " '2025-01-01T03:04:05.678Z', 'maria')"),
        QStringLiteral("INSERT INTO quote_details VALUES (2, 'edTerm', '10')"),
        QStringLiteral("INSERT INTO quote_funds VALUES (2, 0, 12, 'Karoo Equity Fund', 333333, 333333)"),
        QStringLiteral("INSERT INTO quote_funds VALUES (2, 1, 15, 'Karoo Property Fund', 666667, 666667)"),
        QStringLiteral("INSERT INTO quote_funds VALUES (3, 0, 12, 'Karoo Equity Fund', 999999, 999999)"),
        QStringLiteral("INSERT INTO products VALUES (1, 1, 1, 'Old Annuity', 'Ou Annuïteit')"),
    };
    if (m_server)
        statements.prepend(QStringLiteral("CREATE SCHEMA quotedesk"));
    execute(statements);
}

void StoreSuite::upgradesTablesOfVersionOne()
{
    makeVersionOne();
    const auto store = open();
    QCOMPARE(store->database().single(QStringLiteral("SELECT Version FROM schema_version")).toInt(), 2);
    const QList<QuoteSummary> quotes = store->quotes();
    QCOMPARE(quotes.size(), 3);
    QCOMPARE(quotes.at(0).product, QStringLiteral("Old Annuity"));
    QCOMPARE(quotes.at(0).client, QStringLiteral("Botha, Maria"));
    QCOMPARE((QList<bool>{quotes.at(0).allocated, quotes.at(1).allocated, quotes.at(2).allocated}),
             (QList<bool>{true, false, false}));

    Quote whole = store->quote(2);
    QCOMPARE(whole.revision, 4);
    QCOMPARE(whole.amount, Currency(100));
    QCOMPARE(whole.details, (QMap<QString, QString>{{QStringLiteral("edTerm"), QStringLiteral("10")}}));
    QVERIFY((whole.asked == AskedQuestions{true, false, false, true}));
    QCOMPARE(whole.changed, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 678), Qt::UTC));
    const QList<QuotedFund> funds{
        {12, QStringLiteral("Karoo Equity Fund"), money("33.3333"), money("33.3333")},
        {15, QStringLiteral("Karoo Property Fund"), money("66.6667"), money("66.6667")}};
    QCOMPARE(whole.funds, funds);

    // The upgraded tables do all that new ones do, and new numbers go on from the old ones.
    QCOMPARE(store->save(whole), 2);
    Quote fresh = numberedQuote(1, 2);
    QVERIFY(store->save(fresh) > 6);
    store->keepDraft(QStringLiteral("a"), fresh);
    store->remove(3);
    store->restore(3);
    QCOMPARE(open()->quotes().size(), 4);
}

void StoreSuite::refusesNewerTables()
{
    Quote quote = numberedQuote(1, 2);
    open()->save(quote);
    execute({QStringLiteral("UPDATE schema_version SET Version = 3")});
    const QString message = storeErrorOf([this] { open(); });
    QVERIFY2(message.startsWith(QStringLiteral("The database %1 was made by a newer version of Quote Desk")
                                    .arg(m_location.text())),
             qPrintable(message));
    QVERIFY(message.contains(QStringLiteral("version 3, this program knows up to 2")));
    execute({QStringLiteral("UPDATE schema_version SET Version = 2")});
    QVERIFY(open()->quote(quote.quoteID) == quote);
}

void StoreSuite::datasetsOnTheConnection()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 3);
    store->save(quote);
    TQuery query;
    query.SetDatabaseName(store->connectionName());
    query.SetSQL(QStringLiteral("SELECT FundName FROM quote_funds WHERE QuoteID = :quote ORDER BY Position"));
    query.Params().ParamByName(QStringLiteral("quote")).SetAsInteger(static_cast<int>(quote.quoteID));
    query.Open();
    QCOMPARE(query.RecordCount(), 3);
    QCOMPARE(query.FieldByName(QStringLiteral("FundName"))->AsString(), QStringLiteral("Fund 1 of 1"));
    query.Close();
    query.UnPrepare();
}

void StoreSuite::catalogueStaysWithTheQuotes()
{
    {
        const auto store = open();
        CatalogueDatabase catalogue(store->database());
        catalogue.importFile(write(catalogueOf(250)));
        QVERIFY(!catalogue.hasFund(12));
    }
    const auto store = open();
    CatalogueDatabase catalogue(store->database());
    QVERIFY(catalogue.hasFund(100249));
    QVERIFY(!catalogue.hasFund(12));
    const CatalogueProviders providers(catalogue);
    QCOMPARE(rowsOf(providers.fundPacket(2)).size(), 1 + 250);
}

void StoreSuite::sameCatalogueOnEveryEngine()
{
    const auto store = open();
    const CatalogueDatabase here(store->database());
    const CatalogueDatabase memory;
    CatalogueProviders ours(here);
    CatalogueProviders reference(memory);
    for (const Product &product : memory.products())
        QCOMPARE(rowsOf(ours.fundPacket(product.productID)), rowsOf(reference.fundPacket(product.productID)));
    const auto rows = [](CatalogueProviders &providers, const char *name, int value) {
        TParams params;
        for (const char *param : {"pProductGroupID", "pProductID", "pFundGroupID"})
            params.Add(QString::fromLatin1(param), TParamDataType::FixedChar).SetAsInteger(value);
        return rowsOf(providers.connection()->GetRecords(QString::fromLatin1(name), params).ToVariant());
    };
    for (const char *name : {"dspFundGroupType", "dspFundGroup", "dspFundPerProduct", "dspFundMessage"}) {
        for (const int value : {1, 2, 11, 99})
            QCOMPARE(rows(ours, name, value), rows(reference, name, value));
    }
    // The types of the fields are the same too.
    TClientDataSet left;
    TClientDataSet right;
    left.SetData(ours.fundPacket(1));
    right.SetData(reference.fundPacket(1));
    for (int i = 0; i < right.FieldCount(); ++i)
        QVERIFY2(left.Fields(i)->DataType() == right.Fields(i)->DataType(),
                 qPrintable(right.Fields(i)->FieldName()));
}

void StoreSuite::catalogueWithoutTheProductsFunds()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 3);
    quote.productID = 2;
    store->save(quote);
    store->database().run(QStringLiteral("UPDATE fund_groups SET OfferedBy = '1 3'"));
    const CatalogueDatabase catalogue(store->database());
    const CatalogueProviders providers(catalogue);
    // The column names alone; a quote on the product is read as it was saved.
    QCOMPARE(rowsOf(providers.fundPacket(2)).size(), 1);
    QVERIFY(rowsOf(providers.fundPacket(3)).size() > 100);
    QVERIFY(store->quote(quote.quoteID) == quote);
    QCOMPARE(store->quotes().constFirst().product, QStringLiteral("Harvest Living Annuity"));
    store->database().run(QStringLiteral("DELETE FROM products WHERE ProductID = 2"));
    QCOMPARE(store->quotes().constFirst().product, QString());
    QVERIFY(store->quote(quote.quoteID) == quote);
}

void StoreSuite::importsManyFunds()
{
    constexpr int Funds = 100'000;
    const QString path = write(catalogueOf(Funds));
    const auto store = open();
    CatalogueDatabase catalogue(store->database());
    const ImportReport report = catalogue.importFile(path, [](int) { return true; });
    QCOMPARE(report.imported, Funds);
    QCOMPARE(report.linesRead, Funds);
    QCOMPARE(store->database().single(QStringLiteral("SELECT count(*) FROM funds")).toInt(), Funds);
    QVERIFY(catalogue.hasFund(199999));
    // As many others in their place.
    QCOMPARE(catalogue.importFile(path, {}).imported, Funds);
    QCOMPARE(store->database().single(QStringLiteral("SELECT count(*) FROM funds")).toInt(), Funds);
}

void StoreSuite::quotesOnTheRealCatalogue()
{
    QString path = ZelTest::realCatalogue();
    int funds = 14280;
    if (path.isEmpty()) {
        qInfo("The real catalogue is not here; one of 3,000 funds is made for the test");
        funds = 3000;
        path = write(catalogueOf(funds));
    }
    Quote quote;
    quote.productID = 3;
    quote.amount = money("1000000.01");
    {
        const auto store = open();
        CatalogueDatabase catalogue(store->database());
        const ImportReport report = catalogue.importFile(path, [](int) { return true; });
        QCOMPARE(report.imported, funds);
        QCOMPARE(report.refused, QList<ImportReport::Refused>());
        const CatalogueProviders providers(catalogue);
        TClientDataSet offered;
        offered.SetData(providers.fundPacket(quote.productID));
        QCOMPARE(offered.RecordCount(), funds);
        const int step = funds / 100;
        for (int row = 0; row < 100; ++row) {
            quote.funds.append({offered.FieldByName(QStringLiteral("FundID"))->AsInteger(),
                                offered.FieldByName(QStringLiteral("FundName"))->AsString(), money("10000"),
                                money("1")});
            for (int skipped = 0; skipped < step; ++skipped)
                offered.Next();
        }
        quote.funds.last().amount += money("0.01");
        store->save(quote);
    }
    // Next week.
    const auto store = open();
    QVERIFY(store->quotes().constFirst().allocated);
    const Quote read = store->quote(quote.quoteID);
    QVERIFY(read == quote);
    const CatalogueDatabase catalogue(store->database());
    for (const QuotedFund &fund : read.funds)
        QVERIFY(catalogue.hasFund(fund.fundID));
}

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    const QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zel-test"));
    StoreSuite onFile(nullptr);
    int failures = QTest::qExec(&onFile, argc, argv);
    if (PostgresServer::Offered()) {
        PostgresServer server;
        if (!server.Start()) {
            qCritical("PostgreSQL does not run: %s", qPrintable(server.Reason()));
            return 1;
        }
        StoreSuite onServer(&server);
        failures += QTest::qExec(&onServer, argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
#include "tst_store.moc"
