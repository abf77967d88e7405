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

using namespace Qt::StringLiterals;

using namespace StoreTesting;

namespace
{

QByteArray catalogueOf(int funds)
{
    QByteArray text = "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n";
    for (int fund = 0; fund < funds; ++fund)
        text += u"%1,Type %1,%2,Group %2,%3,Fund with a name of some length %3\r\n"_s.arg(fund / 5000 + 1)
                    .arg(fund / 100 + 1)
                    .arg(100000 + fund)
                    .toUtf8();
    return text;
}

/// All rows of a packet as texts; the first text has the column names in lower case.
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

/// The store's behaviour on one engine. Each test has its own database.
class StoreSuite : public ZelTest
{
    Q_OBJECT
public:
    /// Without @p server the tests run on SQLite.
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
    void theBinSurvivesARestart();
    void theBinIsEmptiedByAge();
    void deletesForGood();
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
    void upgradesTablesOfVersionTwo();
    void anUpgradeIsMadeWholeOrNotAtAll();
    void refusesNewerTables();
    void datasetsOnTheConnection();
    void catalogueStaysWithTheQuotes();
    void sameCatalogueOnEveryEngine();
    void catalogueWithoutTheProductsFunds();
    void importsManyFunds();
    void quotesOnTheRealCatalogue();

private:
    std::unique_ptr<QuoteStore> open() { return QuoteStore::open(m_location); }
    /// Creates the tables of version 1 as that version did.
    void makeVersionOne();
    /// The same for version 2, with deleted quotes and a catalogue.
    void makeVersionTwo();
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
    m_location = newDatabase(m_server, m_folder, u"quotes%1"_s.arg(++m_count));
}

void StoreSuite::cleanup()
{
    // Every store has removed its connection.
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

QString StoreSuite::write(const QByteArray &content)
{
    QFile file(m_folder.filePath(u"catalogue%1.csv"_s.arg(m_count)));
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
    QCOMPARE(store->deletedQuotes(), QList<DeletedQuote>());
    QCOMPARE(store->clients(), QList<Client>());
    QCOMPARE(store->abandonedDrafts().size(), 0);
    QVERIFY(!store->changedElsewhere());
    QCOMPARE(store->database().single(u"SELECT Version FROM schema_version"_s).toInt(), 5);
    const CatalogueDatabase catalogue(store->database());
    QCOMPARE(catalogue.products().size(), 3);
    QVERIFY(catalogue.hasFund(12));
    QCOMPARE(catalogue.products().constFirst().nameAfrikaans,
             QString::fromUtf8("Horison Uittreeannu\xc3\xaft\x65it"));
    if (m_server)
        return;
    QCOMPARE(store->database().single(u"PRAGMA journal_mode"_s).toString(), u"wal"_s);
    QCOMPARE(store->database().single(u"PRAGMA synchronous"_s).toInt(), 2);
    QCOMPARE(store->database().single(u"PRAGMA foreign_keys"_s).toInt(), 1);
}

void StoreSuite::savesEveryFieldExactly()
{
    Quote quote;
    quote.productID = 2;
    quote.description = QString::fromUtf8("O'Brien's \"plan\" \\ caf\xc3\xa9 \xf0\x9f\x92\xb0 ?\n100 %; --");
    quote.amount = money("9999999999.9999");
    quote.byAmount = true;
    quote.details = {{u"edTerm"_s, u"10"_s}, {u"edNote"_s, QString()}, {u"it's ?"_s, u"$1 :a ?"_s}};
    quote.asked = {true, false, true, false};
    // A fund that appears twice, as it may be in two groups, and amounts that no double represents.
    quote.funds = {{12, u"Karoo Equity Fund"_s, money("0.0001"), money("33.3333")},
                   {38, QString(), Currency::max(), money("-0.0001")},
                   {12, u"Karoo Equity Fund"_s, Currency::min(), money("100")},
                   {7, u"x"_s, money("900719925474.0993"), Currency()}};
    quote.funds[1].name = u""_s;

    const QDateTime before = QDateTime::currentDateTimeUtc();
    Quote saved = quote;
    qint64 id = 0;
    {
        const auto store = open();
        Client client{0, u"Botha"_s, u"Maria"_s, {}, {}, {}, {}};
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
    // Reads the quote again with a new store.
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
                 u"Botha"_s,
                 u"Maria Elizabeth"_s,
                 u"8001015009087"_s,
                 QDate(1980, 1, 1),
                 u"m@botha.example"_s,
                 u"+27 21 555 0101"_s};
    Client adams{0, u"Adams"_s, {}, {}, {}, {}, {}};
    const qint64 id = store->saveClient(botha);
    QCOMPARE(botha.clientID, id);
    QVERIFY(store->saveClient(adams) != id);
    QCOMPARE(store->clients(), (QList<Client>{adams, botha}));
    QCOMPARE(store->client(id), botha);

    botha.surname = u"Aaron"_s;
    botha.dateOfBirth = {};
    QCOMPARE(store->saveClient(botha), id);
    QCOMPARE(open()->clients(), (QList<Client>{botha, adams}));

    // Sorted without regard to case, so "de Villiers" does not follow "Zulu".
    Client deVilliers{0, u"de Villiers"_s, u"Jan"_s, {}, {}, {}, {}};
    Client zulu{0, u"Zulu"_s, {}, {}, {}, {}, {}};
    Client anna{0, u"De Villiers"_s, u"Anna"_s, {}, {}, {}, {}};
    for (Client *const client : {&zulu, &deVilliers, &anna})
        store->saveClient(*client);
    QCOMPARE(store->clients(), (QList<Client>{botha, adams, anna, deVilliers, zulu}));
    for (const Client &client : {deVilliers, zulu, anna})
        store->removeClient(client.clientID);

    store->removeClient(id);
    QCOMPARE(store->clients(), QList<Client>{adams});
    QCOMPARE(storeErrorOf([&] { store->saveClient(botha); }),
             u"The client is no longer there; somebody else has deleted it."_s);
    QVERIFY(!storeErrorOf([&] { store->client(id); }).isEmpty());
}

void StoreSuite::keepsAClientThatHasQuotes()
{
    const auto store = open();
    Client client{0, u"Botha"_s, {}, {}, {}, {}, {}};
    Quote quote = numberedQuote(1, 2);
    quote.clientID = store->saveClient(client);
    store->save(quote);
    const auto remove = [&] { store->removeClient(client.clientID); };
    const QString refused = u"The client cannot be deleted while there are quotes for this client. Delete "
                            "these quotes first."_s;
    QCOMPARE(storeErrorOf(remove), refused);
    store->remove(quote.quoteID);
    // The deleted quote is in no list, so the message has to mention it.
    QVERIFY(storeErrorOf(remove).contains(u"deleted quotes"_s));
    QCOMPARE(store->clients().size(), 1);
    store->restore(quote.quoteID);
    QCOMPARE(store->quote(quote.quoteID).clientID, client.clientID);
    // The client can be deleted after its last quote was permanently deleted.
    store->remove(quote.quoteID);
    store->deleteForGood(quote.quoteID);
    QCOMPARE(storeErrorOf(remove), QString());
    QCOMPARE(store->clients().size(), 0);
}

void StoreSuite::quotesAsTheListShowsThem()
{
    const auto store = open();
    Client client{0, u"Botha"_s, u"Maria"_s, {}, {}, {}, {}};
    Client surnameOnly{0, u"Adams"_s, {}, {}, {}, {}, {}};
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
    Quote tooMuch = numberedQuote(3, 3);
    tooMuch.amount -= money("0.01");
    store->save(tooMuch);
    Quote bare;
    bare.productID = 77;
    store->save(bare);

    const auto summary = [](const Quote &quote, const char *product, const char *name, bool allocated,
                            bool over = false) {
        return QuoteSummary{quote.quoteID,
                            quote.productID,
                            QString::fromLatin1(product),
                            quote.clientID,
                            QString::fromLatin1(name),
                            quote.description,
                            quote.amount,
                            allocated,
                            quote.changed,
                            quote.changedBy,
                            over};
    };
    QList<QuoteSummary> expected{summary(bare, "", "", false),
                                 summary(tooMuch, "Horizon Retirement Annuity", "", false, true),
                                 summary(draft, "Summit Investment Plan", "Adams", false),
                                 summary(whole, "Horizon Retirement Annuity", "Botha, Maria", true)};
    QCOMPARE(store->quotes(), expected);

    // The quote saved last is first.
    QTest::qSleep(2); // so that their times differ
    store->save(whole);
    expected = {summary(whole, "Horizon Retirement Annuity", "Botha, Maria", true), expected.at(0),
                expected.at(1), expected.at(2)};
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
    theirs.description = u"theirs"_s;
    others->save(theirs);

    mine.description = u"mine"_s;
    const Quote before = mine;
    bool told = false;
    try {
        ours->save(mine);
    } catch (const QuoteChangedElsewhere &error) {
        told = true;
        QVERIFY(error.theirs() == theirs);
        QVERIFY(!error.isRemoved());
        QCOMPARE(error.message(),
                 u"The quote has been changed by %1 in the meantime."_s.arg(theirs.changedBy));
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
    theirs.description = u"theirs"_s;
    store->save(theirs);
    QCOMPARE(theirs.revision, 2);

    Quote copy = stale;
    QVERIFY(store->save(copy, SaveMode::AsCopy) != stale.quoteID);
    QCOMPARE(copy.revision, 1);
    QVERIFY(store->quote(stale.quoteID) == theirs);
    QVERIFY(store->quote(copy.quoteID) == copy);

    QCOMPARE(store->save(stale, SaveMode::Overwrite), theirs.quoteID);
    // The user with the overwritten version gets the conflict in turn.
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
        others->deleteForGood(mine.quoteID);
    }
    // The quote is permanently deleted; a user who has it open can still save it again.
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

void StoreSuite::theBinSurvivesARestart()
{
    Quote first = numberedQuote(4, 5);
    Quote second = numberedQuote(5, 2);
    const QDateTime before = QDateTime::currentDateTimeUtc();
    {
        const auto store = open();
        Client client{0, u"Botha"_s, u"Maria"_s, {}, {}, {}, {}};
        first.clientID = store->saveClient(client);
        store->save(first);
        store->save(second);
        store->remove(first.quoteID);
        QTest::qSleep(2); // so that their times differ
        store->remove(second.quoteID);
    }
    const auto store = open();
    QCOMPARE(store->quotes(), QList<QuoteSummary>());
    const QList<DeletedQuote> deleted = store->deletedQuotes();
    QCOMPARE(deleted.size(), 2);
    QCOMPARE(deleted.at(0).quote.quoteID, second.quoteID);
    QCOMPARE(deleted.at(1).quote.client, u"Botha, Maria"_s);
    QCOMPARE(deleted.at(1).quote.description, first.description);
    QCOMPARE(deleted.at(1).quote.amount, first.amount);
    for (const DeletedQuote &quote : deleted) {
        QVERIFY(quote.deleted >= before && quote.deleted <= QDateTime::currentDateTimeUtc());
        QCOMPARE(quote.deletedBy, first.changedBy);
    }
    store->restore(first.quoteID);
    QVERIFY(store->quote(first.quoteID) == first);
    QCOMPARE(store->deletedQuotes().size(), 1);
    QCOMPARE(store->quotes().size(), 1);
}

void StoreSuite::theBinIsEmptiedByAge()
{
    Quote old = numberedQuote(4, 5);
    Quote recent = numberedQuote(5, 5);
    Quote kept = numberedQuote(6, 5);
    {
        const auto store = open();
        for (Quote *const quote : {&old, &recent, &kept})
            store->save(*quote);
        store->remove(old.quoteID);
        store->remove(recent.quoteID);
    }
    const auto dated = [](const Quote &quote, qint64 seconds) {
        return u"UPDATE quotes SET DeletedAt = '%1' WHERE QuoteID = %2"_s
            .arg(QDateTime::currentDateTimeUtc().addSecs(-seconds).toString(Qt::ISODateWithMs))
            .arg(quote.quoteID);
    };
    const qint64 limit = qint64{QuoteStore::DaysInBin} * 24 * 60 * 60;
    execute({dated(old, limit + 60), dated(recent, limit - 60)});
    const auto store = open();
    QCOMPARE(store->deletedQuotes().size(), 1);
    QCOMPARE(store->deletedQuotes().constFirst().quote.quoteID, recent.quoteID);
    const auto rows = [&store](const char *table) {
        return store->database().single(u"SELECT count(*) FROM "_s + QLatin1StringView(table)).toInt();
    };
    QCOMPARE(rows("quotes"), 2);
    QCOMPARE(rows("quote_funds"), 10);
    QCOMPARE(rows("quote_details"), 4);
    store->restore(recent.quoteID);
    QCOMPARE(store->quotes().size(), 2);
}

void StoreSuite::deletesForGood()
{
    const auto store = open();
    const auto other = open();
    Quote quote = numberedQuote(4, 5);
    store->save(quote);
    const QString gone =
        u"The quote is no longer among the deleted quotes; somebody else has brought it back or "
        "deleted it for good."_s;
    // Only quotes in the bin can be permanently deleted.
    QCOMPARE(storeErrorOf([&] { store->deleteForGood(quote.quoteID); }), gone);
    store->remove(quote.quoteID);
    store->deleteForGood(quote.quoteID);
    QCOMPARE(store->deletedQuotes().size(), 0);
    QCOMPARE(store->database().single(u"SELECT count(*) FROM quote_funds"_s).toInt(), 0);
    QCOMPARE(storeErrorOf([&] { other->restore(quote.quoteID); }), gone);
    QCOMPARE(storeErrorOf([&] { other->remove(quote.quoteID); }),
             u"The quote is no longer there; somebody else has deleted it."_s);
}

void StoreSuite::duplicates()
{
    const auto store = open();
    Quote quote = numberedQuote(9, 4);
    store->save(quote);
    const qint64 id = store->duplicate(quote.quoteID);
    QVERIFY(id != quote.quoteID);
    Quote copy = store->quote(id);
    QCOMPARE(copy.description, u"Number 9 (copy)"_s);
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
             u"The client has been deleted by somebody else. Choose another client."_s);
    QVERIFY(quote == before);
    QCOMPARE(store->quotes().size(), 0);
}

void StoreSuite::refusesATextThatCannotBeKept()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 3);
    store->save(quote);
    Quote next = quote;
    next.description = u"Retire"_s + QChar(u'\0') + u"ment"_s;
    const QString refused = u"The text \"Retirement\" has a character in it that no database can keep "
                            "(number 0). Type that text again."_s;
    QCOMPARE(storeErrorOf([&] { store->save(next); }), refused);
    // A draft keeps the text as typed.
    store->keepDraft(QuoteStore::newDraftKey(), next);
    QVERIFY(store->quote(quote.quoteID) == quote);
    Client client;
    client.surname = next.description;
    QCOMPARE(storeErrorOf([&] { store->saveClient(client); }), refused);
    QCOMPARE(store->clients().size(), 0);
    next.description = u"Retirement"_s;
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
    typed.changedBy = u"somebody"_s;
    typed.funds[0].amount = Currency::max();
    const auto other = open();
    {
        const auto crashed = open();
        crashed->keepDraft(QuoteStore::newDraftKey(), numberedQuote(1, 1));
        QTest::qSleep(5); // so that their times differ
        crashed->keepDraft(key, numberedQuote(2, 2));
        crashed->keepDraft(key, typed);
        // The program with these drafts is still running.
        QCOMPARE(other->abandonedDrafts().size(), 0);
        QCOMPARE(crashed->abandonedDrafts().size(), 0);
        crashed->dropDraft(u"no such draft"_s);
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

    // Another user's drafts and unreadable ones are not offered and do no harm.
    execute({u"UPDATE drafts SET Person = 'somebody else'"_s});
    QCOMPARE(other->abandonedDrafts().size(), 0);
    execute({u"INSERT INTO drafts SELECT 'bad', InstanceID, 'x', Kept, '{\"amount\":\"much\"}'"
             " FROM drafts"_s,
             u"UPDATE drafts SET Person = '%1'"_s.arg(typed.changedBy)});
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
            store->database().announceChange();
            // A save during the transaction is refused with a message; drafts wait for its end.
            Quote quote = numberedQuote(2, 2);
            QCOMPARE(
                storeErrorOf([&] { store->save(quote); }),
                u"The database is busy with other work of this program. Try again when that work is done."_s);
            store->keepDraft(kept, numberedQuote(3, 3));
            store->dropDraft(dropped);
            // The transaction is rolled back; the drafts are stored nevertheless.
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
    // A change by others before our own change is reported, too.
    Client client{0, u"Botha"_s, {}, {}, {}, {}, {}};
    others->saveClient(client);
    ours->save(quote);
    QVERIFY(ours->changedElsewhere());
    QVERIFY(!ours->changedElsewhere());
    others->keepDraft(u"a"_s, quote);
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
                // Every conflict on the shared quote is reported; saving again with the current revision
                // succeeds in the end.
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
                            failure = u"theirs is not whole"_s;
                    }
                }
            }
            if (mine.revision != Rounds)
                failure = u"revision %1"_s.arg(mine.revision);
        } catch (const StoreError &error) {
            failure = error.message() + error.details();
        }
    };
    std::thread other([this, &work] { work(*open(), 10'000); });
    work(*store, 20'000);
    other.join();
    QCOMPARE(failure, QString());
    QCOMPARE(store->quotes().size(), 3);
    // No save was lost.
    QCOMPARE(store->quote(sharedID).revision, 1 + 2 * Rounds);
    for (const QuoteSummary &summary : store->quotes())
        QVERIFY(numberOf(store->quote(summary.quoteID)) >= 10'000);
}

void StoreSuite::makeVersionOne()
{
    QStringList statements{
        u"CREATE TABLE schema_version (Version INTEGER NOT NULL)"_s,
        u"INSERT INTO schema_version (Version) VALUES (1)"_s,
        u"CREATE TABLE store_state (ChangeCount BIGINT NOT NULL, LastID BIGINT NOT NULL)"_s,
        u"INSERT INTO store_state (ChangeCount, LastID) VALUES (17, 6)"_s,
        u"CREATE TABLE clients (ClientID BIGINT PRIMARY KEY, Surname TEXT NOT NULL, FirstNames TEXT"
        " NOT NULL, IDNumber TEXT NOT NULL, DateOfBirth TEXT NOT NULL, EMail TEXT NOT NULL,"
        " Telephone TEXT NOT NULL)"_s,
        u"CREATE TABLE quotes (QuoteID BIGINT PRIMARY KEY, Revision INTEGER NOT NULL, ProductID"
        " INTEGER NOT NULL, ClientID BIGINT REFERENCES clients (ClientID), Description TEXT NOT"
        " NULL, Amount BIGINT NOT NULL, ByAmount BOOLEAN NOT NULL, AskedWorldOGS BOOLEAN NOT NULL,"
        " AskedOGS BOOLEAN NOT NULL, AskedBulwarkWorld BOOLEAN NOT NULL, AskedWorldOGSInternational"
        " BOOLEAN NOT NULL, Changed TEXT NOT NULL, ChangedBy TEXT NOT NULL)"_s,
        u"CREATE TABLE quote_details (QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE"
        " CASCADE, DetailName TEXT NOT NULL, DetailValue TEXT NOT NULL, PRIMARY KEY (QuoteID,"
        " DetailName))"_s,
        u"CREATE TABLE quote_funds (QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE"
        " CASCADE, Position INTEGER NOT NULL, FundID INTEGER NOT NULL, FundName TEXT NOT NULL,"
        " Amount BIGINT NOT NULL, FundPercent BIGINT NOT NULL, PRIMARY KEY (QuoteID, Position))"_s,
        u"CREATE TABLE products (RowNo INTEGER NOT NULL, ProductID INTEGER PRIMARY KEY,"
        " ProductGroupID INTEGER NOT NULL, ProductName TEXT NOT NULL, ProductName_AFR TEXT NOT"
        " NULL)"_s,
        u"CREATE TABLE group_types (RowNo INTEGER NOT NULL, GroupTypeID INTEGER PRIMARY KEY,"
        " GroupTypeDesc TEXT NOT NULL, GroupTypeDesc_AFR TEXT NOT NULL)"_s,
        u"CREATE TABLE fund_groups (RowNo INTEGER NOT NULL, FundGroupID INTEGER PRIMARY KEY,"
        " GroupTypeID INTEGER NOT NULL REFERENCES group_types (GroupTypeID), FundGroupName TEXT NOT"
        " NULL, FundGroupName_AFR TEXT NOT NULL, ProductGroups TEXT NOT NULL, OfferedBy TEXT NOT"
        " NULL)"_s,
        u"CREATE TABLE funds (RowNo INTEGER NOT NULL, FundID INTEGER NOT NULL, FundGroupID INTEGER"
        " NOT NULL REFERENCES fund_groups (FundGroupID), FundName TEXT NOT NULL, FundName_AFR TEXT"
        " NOT NULL, MainframeID TEXT NOT NULL, MinimumInitialAmount NUMERIC(15,4) NOT NULL DEFAULT"
        " 0, MinimumSchedAmount NUMERIC(15,4) NOT NULL DEFAULT 0, BuySellRate NUMERIC(15,4) NOT"
        " NULL DEFAULT 0, ManRate NUMERIC(15,4) NOT NULL DEFAULT 0, UnderlyingManRate NUMERIC(15,4)"
        " NOT NULL DEFAULT 0, GuaranteeRate NUMERIC(15,4) NOT NULL DEFAULT 0, TrustRate"
        " NUMERIC(15,4) NOT NULL DEFAULT 0, FundTerm INTEGER NOT NULL DEFAULT 0, InternationalFund"
        " BOOLEAN NOT NULL DEFAULT FALSE, AllowAsGuarantee BOOLEAN NOT NULL DEFAULT FALSE,"
        " Benchmark TEXT NOT NULL DEFAULT '', BenchmarkPerf TEXT NOT NULL DEFAULT '', MinPerfFee"
        " TEXT NOT NULL DEFAULT '', MaxPerfFee TEXT NOT NULL DEFAULT '', FundSheetURL TEXT NOT NULL"
        " DEFAULT '', UNIQUE (FundGroupID, FundID))"_s,
        u"CREATE INDEX funds_by_id ON funds (FundID)"_s,
        u"CREATE TABLE fund_messages (RowNo INTEGER NOT NULL, FundGroupID INTEGER NOT NULL"
        " REFERENCES fund_groups (FundGroupID), FundID INTEGER NOT NULL, Question TEXT NOT NULL,"
        " UNIQUE (FundGroupID, FundID))"_s,
        u"INSERT INTO clients VALUES (1, 'Botha', 'Maria', '80', '1980-01-01', 'm@b.example', '1')"_s,
        // Allocated, not allocated, allocated with an amount of 0, and without funds.
        u"INSERT INTO quotes VALUES (2, 4, 1, 1, 'whole', 1000000, TRUE, TRUE, FALSE, FALSE, TRUE,"
        " '2026-01-02T03:04:05.678Z', 'maria')"_s,
        u"INSERT INTO quotes VALUES (3, 1, 2, NULL, 'open', 1000000, FALSE, FALSE, FALSE, FALSE,"
        " FALSE, '2026-01-01T03:04:05.678Z', 'maria')"_s,
        u"INSERT INTO quotes VALUES (4, 1, 2, NULL, 'bare', 0, FALSE, FALSE, FALSE, FALSE, FALSE,"
        " '2025-01-01T03:04:05.678Z', 'maria')"_s,
        u"INSERT INTO quote_details VALUES (2, 'edTerm', '10')"_s,
        u"INSERT INTO quote_funds VALUES (2, 0, 12, 'Karoo Equity Fund', 333333, 333333)"_s,
        u"INSERT INTO quote_funds VALUES (2, 1, 15, 'Karoo Property Fund', 666667, 666667)"_s,
        u"INSERT INTO quote_funds VALUES (3, 0, 12, 'Karoo Equity Fund', 999999, 999999)"_s,
        u"INSERT INTO products VALUES (1, 1, 1, 'Old Annuity', 'Ou Annuïteit')"_s,
    };
    if (m_server)
        statements.prepend(u"CREATE SCHEMA quotedesk"_s);
    execute(statements);
}

void StoreSuite::upgradesTablesOfVersionOne()
{
    makeVersionOne();
    // More than the investment: by amount and by percent.
    execute({
        u"INSERT INTO quotes VALUES (5, 1, 1, NULL, 'over', 1000000, TRUE, FALSE, FALSE, FALSE, FALSE,"
        " '2024-02-01T03:04:05.678Z', 'maria')"_s,
        u"INSERT INTO quotes VALUES (6, 1, 1, NULL, 'over', 1000000, FALSE, FALSE, FALSE, FALSE, FALSE,"
        " '2024-01-01T03:04:05.678Z', 'maria')"_s,
        u"INSERT INTO quote_funds VALUES (5, 0, 12, 'Karoo Equity Fund', 1000100, 1000100)"_s,
        u"INSERT INTO quote_funds VALUES (6, 0, 12, 'Karoo Equity Fund', 1100000, 1100000)"_s,
    });
    const auto store = open();
    QCOMPARE(store->database().single(u"SELECT Version FROM schema_version"_s).toInt(), 5);
    const QList<QuoteSummary> quotes = store->quotes();
    QCOMPARE(quotes.size(), 5);
    QCOMPARE(quotes.at(0).product, u"Old Annuity"_s);
    QCOMPARE(quotes.at(0).client, u"Botha, Maria"_s);
    QCOMPARE((QList<bool>{quotes.at(0).allocated, quotes.at(1).allocated, quotes.at(2).allocated}),
             (QList<bool>{true, false, false}));
    QList<bool> over;
    for (const QuoteSummary &quote : quotes)
        over.append(quote.overAllocated);
    QCOMPARE(over, (QList<bool>{false, false, false, true, true}));

    Quote whole = store->quote(2);
    QCOMPARE(whole.revision, 4);
    QCOMPARE(whole.amount, Currency(100));
    QCOMPARE(whole.details, (QMap<QString, QString>{{u"edTerm"_s, u"10"_s}}));
    QVERIFY((whole.asked == AskedQuestions{true, false, false, true}));
    QCOMPARE(whole.changed, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 678), Qt::UTC));
    const QList<QuotedFund> funds{{12, u"Karoo Equity Fund"_s, money("33.3333"), money("33.3333")},
                                  {15, u"Karoo Property Fund"_s, money("66.6667"), money("66.6667")}};
    QCOMPARE(whole.funds, funds);

    // The upgraded tables work like new ones, and new ids follow the old ones.
    QCOMPARE(store->save(whole), 2);
    Quote fresh = numberedQuote(1, 2);
    QVERIFY(store->save(fresh) > 6);
    store->keepDraft(u"a"_s, fresh);
    store->remove(3);
    store->restore(3);
    QCOMPARE(open()->quotes().size(), 6);
}

void StoreSuite::makeVersionTwo()
{
    makeVersionOne();
    execute({
        u"ALTER TABLE quotes ADD COLUMN Allocated BOOLEAN NOT NULL DEFAULT FALSE"_s,
        u"ALTER TABLE quotes ADD COLUMN SaveKey TEXT NOT NULL DEFAULT ''"_s,
        u"ALTER TABLE quotes ADD COLUMN RemovedIn BIGINT"_s,
        u"CREATE INDEX quotes_by_client ON quotes (ClientID)"_s,
        u"CREATE INDEX quotes_by_save ON quotes (SaveKey)"_s,
        u"CREATE TABLE drafts (DraftKey TEXT PRIMARY KEY, InstanceID BIGINT NOT NULL, Person TEXT NOT"
        " NULL, Kept TEXT NOT NULL, Content TEXT NOT NULL)"_s,
        u"UPDATE schema_version SET Version = 2"_s,
        // One quote was deleted by a program that never purged it, another one was deleted and restored.
        u"UPDATE quotes SET RemovedIn = 5 WHERE QuoteID = 2"_s,
        u"UPDATE quotes SET RemovedIn = 6 WHERE QuoteID = 3"_s,
        u"UPDATE quotes SET RemovedIn = NULL WHERE QuoteID = 3"_s,
        u"INSERT INTO products VALUES (2, 3, 2, 'Old Plan', '')"_s,
        u"INSERT INTO products VALUES (3, 12, 2, 'Old Bond', '')"_s,
        u"INSERT INTO group_types VALUES (1, 1, 'Trusts', 'Trusts')"_s,
        u"INSERT INTO fund_groups VALUES (1, 20, 1, 'All', '', '1 2', '1 3 12')"_s,
        u"INSERT INTO fund_groups VALUES (2, 21, 1, 'One', '', '2', '12')"_s,
        u"INSERT INTO fund_groups VALUES (3, 22, 1, 'None', '', '', '')"_s,
        // Lists that no version of the program wrote.
        u"INSERT INTO fund_groups VALUES (4, 23, 1, 'Odd', '', ' 1  1', 'x')"_s,
        u"INSERT INTO funds (RowNo, FundID, FundGroupID, FundName, FundName_AFR, MainframeID)"
        " VALUES (1, 12, 20, 'Karoo Equity Fund', '', '')"_s,
        u"INSERT INTO funds (RowNo, FundID, FundGroupID, FundName, FundName_AFR, MainframeID)"
        " VALUES (2, 15, 21, 'Karoo Property Fund', '', '')"_s,
    });
}

void StoreSuite::upgradesTablesOfVersionTwo()
{
    makeVersionTwo();
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const auto store = open();
    QCOMPARE(store->database().single(u"SELECT Version FROM schema_version"_s).toInt(), 5);

    // Quotes that version 2 deleted stay in the bin as long as those deleted now.
    QCOMPARE(store->quotes().size(), 2);
    const QList<DeletedQuote> deleted = store->deletedQuotes();
    QCOMPARE(deleted.size(), 1);
    QCOMPARE(deleted.constFirst().quote.quoteID, 2);
    QCOMPARE(deleted.constFirst().quote.client, u"Botha, Maria"_s);
    QVERIFY(deleted.constFirst().deleted >= before);
    QVERIFY(deleted.constFirst().deleted <= QDateTime::currentDateTimeUtc());
    store->restore(2);
    QCOMPARE(store->quote(2).funds.size(), 2);
    QCOMPARE(store->quotes().size(), 3);
    QCOMPARE(store->quote(3).description, u"open"_s);

    const auto pairs = [&store](const char *table) {
        QStringList result;
        QSqlQuery query = store->database().run(u"SELECT * FROM %1"_s.arg(QLatin1StringView(table)));
        while (store->database().next(query))
            result.append(query.value(0).toString() + u' ' + query.value(1).toString());
        result.sort();
        return result.join(u", "_s);
    };
    QCOMPARE(pairs("fund_group_product_groups"), u"1 20, 1 23, 2 20, 2 21"_s);
    QCOMPARE(pairs("fund_group_products"), u"1 20, 12 20, 12 21, 3 20"_s);
    const CatalogueDatabase catalogue(store->database());
    const CatalogueProviders providers(catalogue);
    QCOMPARE(rowsOf(providers.fundPacket(1)).size(), 1 + 1);
    QCOMPARE(rowsOf(providers.fundPacket(3)).size(), 1 + 1);
    QCOMPARE(rowsOf(providers.fundPacket(12)).size(), 1 + 2);

    // Changes in the upgraded tables are reported to others.
    const auto other = open();
    other->remove(3);
    QVERIFY(store->changedElsewhere());
    QVERIFY(!store->changedElsewhere());
}

void StoreSuite::anUpgradeIsMadeWholeOrNotAtAll()
{
    makeVersionTwo();
    const auto column = [this](const char *statement) {
        return RawConnection(m_location).run(QLatin1StringView(statement)).toString();
    };
    // This table makes the upgrade fail, after the quotes have got their new columns.
    execute({u"CREATE TABLE fund_group_products (x INTEGER)"_s});
    QVERIFY(!storeErrorOf([this] { open(); }).isEmpty());
    QCOMPARE(column("SELECT Version FROM schema_version"), u"2"_s);
    QCOMPARE(column("SELECT ChangeCount FROM store_state"), u"17"_s);
    QCOMPARE(column("SELECT RemovedIn FROM quotes WHERE QuoteID = 2"), u"5"_s);
    QCOMPARE(column("SELECT OfferedBy FROM fund_groups WHERE FundGroupID = 20"), u"1 3 12"_s);
    execute({u"DROP TABLE fund_group_products"_s});
    QCOMPARE(open()->deletedQuotes().size(), 1);
}

void StoreSuite::refusesNewerTables()
{
    Quote quote = numberedQuote(1, 2);
    open()->save(quote);
    execute({u"UPDATE schema_version SET Version = 6"_s});
    const QString message = storeErrorOf([this] { open(); });
    QVERIFY2(message.startsWith(
                 u"The database %1 was made by a newer version of Quote Desk"_s.arg(m_location.text())),
             qPrintable(message));
    QVERIFY(message.contains(u"version 6, this program knows up to 5"_s));
    execute({u"UPDATE schema_version SET Version = 5"_s});
    QVERIFY(open()->quote(quote.quoteID) == quote);
}

void StoreSuite::datasetsOnTheConnection()
{
    const auto store = open();
    Quote quote = numberedQuote(1, 3);
    store->save(quote);
    TQuery query;
    query.SetDatabaseName(store->connectionName());
    query.SetSQL(u"SELECT FundName FROM quote_funds WHERE QuoteID = :quote ORDER BY Position"_s);
    query.Params().ParamByName(u"quote"_s).SetAsInteger(static_cast<int>(quote.quoteID));
    query.Open();
    QCOMPARE(query.RecordCount(), 3);
    QCOMPARE(query.FieldByName(u"FundName"_s)->AsString(), u"Fund 1 of 1"_s);
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
    // The field types are also equal.
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
    store->database().run(u"DELETE FROM fund_group_products WHERE ProductID = 2"_s);
    const CatalogueDatabase catalogue(store->database());
    const CatalogueProviders providers(catalogue);
    // Without rows only the column names are returned; a quote on the product can be read as it was saved.
    QCOMPARE(rowsOf(providers.fundPacket(2)).size(), 1);
    QVERIFY(rowsOf(providers.fundPacket(3)).size() > 100);
    QVERIFY(store->quote(quote.quoteID) == quote);
    QCOMPARE(store->quotes().constFirst().product, u"Harvest Living Annuity"_s);
    store->database().run(u"DELETE FROM products WHERE ProductID = 2"_s);
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
    QCOMPARE(store->database().single(u"SELECT count(*) FROM funds"_s).toInt(), Funds);
    QVERIFY(catalogue.hasFund(199999));
    // Replaces them by the same number of other funds.
    QCOMPARE(catalogue.importFile(path, {}).imported, Funds);
    QCOMPARE(store->database().single(u"SELECT count(*) FROM funds"_s).toInt(), Funds);
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
            quote.funds.append({offered.FieldByName(u"FundID"_s)->AsInteger(),
                                offered.FieldByName(u"FundName"_s)->AsString(), money("10000"), money("1")});
            for (int skipped = 0; skipped < step; ++skipped)
                offered.Next();
        }
        quote.funds.last().amount += money("0.01");
        store->save(quote);
    }
    // A new store on the same database.
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
    QApplication::setApplicationName(u"zel-test"_s);
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
