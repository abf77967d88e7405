#include "store/QuoteStore.h"

#include "catalogue/CatalogueDatabase.h"
#include "database/Database.h"
#include "store/QuoteJson.h"
#include "store/RunningInstance.h"
#include "store/ShownSplit.h"

#include <QCollator>
#include <QCoreApplication>
#include <QUuid>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(QuoteStore)
};

QDateTime timeOf(const QVariant &value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
}

QString textOf(const QDateTime &time)
{
    return time.toString(Qt::ISODateWithMs);
}

Currency amountOf(const QVariant &value)
{
    return Currency::fromRaw(value.toLongLong());
}

qlonglong rawOf(Currency amount)
{
    return amount.raw();
}

/// NULL for 0.
QVariant idOrNull(qint64 id)
{
    return id == 0 ? QVariant() : QVariant(id);
}

Client clientOf(const QSqlQuery &query)
{
    return {query.value(0).toLongLong(),
            query.value(1).toString(),
            query.value(2).toString(),
            query.value(3).toString(),
            QDate::fromString(query.value(4).toString(), Qt::ISODate),
            query.value(5).toString(),
            query.value(6).toString()};
}

QString ClientColumns()
{
    return u"ClientID, Surname, FirstNames, IDNumber, DateOfBirth, EMail, Telephone"_s;
}

/// The number of columns of summaryQuery() for a QuoteSummary; the time and person of the deletion follow.
constexpr int SummaryColumns = 12;

QString summaryQuery()
{
    return u"SELECT Q.QuoteID, Q.ProductID, P.ProductName, Q.ClientID, C.Surname, C.FirstNames,"
           " Q.Description, Q.Amount, Q.Allocated, Q.Changed, Q.ChangedBy, Q.OverAllocated, Q.DeletedAt, "
           "Q.DeletedBy"
           " FROM quotes Q LEFT JOIN products P ON P.ProductID = Q.ProductID"
           " LEFT JOIN clients C ON C.ClientID = Q.ClientID"_s;
}

QuoteSummary summaryOf(const QSqlQuery &query)
{
    QStringList names{query.value(4).toString(), query.value(5).toString()};
    names.removeAll(QString());
    return {query.value(0).toLongLong(), query.value(1).toInt(),  query.value(2).toString(),
            query.value(3).toLongLong(), names.join(u", "_s),     query.value(6).toString(),
            amountOf(query.value(7)),    query.value(8).toBool(), timeOf(query.value(9)),
            query.value(10).toString(),  query.value(11).toBool()};
}

QVariantList clientValues(const Client &client)
{
    return {client.surname, client.firstNames, client.idNumber, client.dateOfBirth.toString(Qt::ISODate),
            client.eMail,   client.telephone};
}

} // namespace

struct QuoteStore::Private {
    Private(const StoreLocation &location, std::shared_ptr<LineCutter> cutter)
        : database(location, std::move(cutter)), instance(database)
    {
    }

    std::optional<Quote> find(qint64 quoteID, bool &removed);
    void checkClient(qint64 clientID);
    bool takePlace(Quote &saved, const Quote &ours, SaveMode mode);
    void write(const Quote &quote, bool isNew);
    void emptyBin();
    void changeOne(qint64 quoteID, const QString &statement, const QVariantList &values,
                   const QString &otherwise);
    void writeDraft(const QString &key, const Quote &quote);
    void deleteDraft(const QString &key);
    void flushDrafts() noexcept;

    Database database;
    RunningInstance instance;
    /// Drafts from the time of a long transaction, to be written afterwards; no quote means that the draft is
    /// to be deleted.
    QMap<QString, std::optional<Quote>> waitingDrafts;
};

/// The quote with this id, even one in the bin.
std::optional<Quote> QuoteStore::Private::find(qint64 quoteID, bool &removed)
{
    Quote quote;
    {
        QSqlQuery query = database.run(
            u"SELECT Revision, ProductID, ClientID, Description, Amount, ByAmount, AskedWorldOGS,"
            " AskedOGS, AskedBulwarkWorld, AskedWorldOGSInternational, Changed, ChangedBy, DeletedAt"
            " FROM quotes WHERE QuoteID = ?"_s,
            {quoteID});
        if (!database.next(query))
            return std::nullopt;
        quote.quoteID = quoteID;
        quote.revision = query.value(0).toInt();
        quote.productID = query.value(1).toInt();
        quote.clientID = query.value(2).toLongLong();
        quote.description = query.value(3).toString();
        quote.amount = amountOf(query.value(4));
        quote.byAmount = query.value(5).toBool();
        quote.asked = {query.value(6).toBool(), query.value(7).toBool(), query.value(8).toBool(),
                       query.value(9).toBool()};
        quote.changed = timeOf(query.value(10));
        quote.changedBy = query.value(11).toString();
        removed = !query.value(12).isNull();
    }
    QSqlQuery details =
        database.run(u"SELECT DetailName, DetailValue FROM quote_details WHERE QuoteID = ?"_s, {quoteID});
    while (database.next(details))
        quote.details.insert(details.value(0).toString(), details.value(1).toString());
    QSqlQuery funds = database.run(u"SELECT FundID, FundName, Amount, FundPercent FROM quote_funds"
                                   " WHERE QuoteID = ? ORDER BY Position"_s,
                                   {quoteID});
    while (database.next(funds))
        quote.funds.append({funds.value(0).toInt(), funds.value(1).toString(), amountOf(funds.value(2)),
                            amountOf(funds.value(3))});
    return quote;
}

void QuoteStore::Private::checkClient(qint64 clientID)
{
    if (clientID != 0 &&
        !database.single(u"SELECT 1 FROM clients WHERE ClientID = ?"_s, {clientID}).isValid())
        throw StoreError(Text::tr("The client has been deleted by somebody else. Choose another client."));
}

/// Writes the quote and replaces its funds and details.
void QuoteStore::Private::write(const Quote &quote, bool isNew)
{
    const ShownSplit split(quote);
    const QVariantList values{quote.revision,
                              quote.productID,
                              idOrNull(quote.clientID),
                              quote.description,
                              rawOf(quote.amount),
                              quote.byAmount,
                              quote.asked.worldOGS,
                              quote.asked.ogs,
                              quote.asked.bulwarkWorld,
                              quote.asked.worldOGSInternational,
                              textOf(quote.changed),
                              quote.changedBy,
                              split.isAllocated(),
                              split.isOver(),
                              quote.saveKey,
                              quote.quoteID};
    if (isNew) {
        database.run(u"INSERT INTO quotes (Revision, ProductID, ClientID, Description, Amount, ByAmount,"
                     " AskedWorldOGS, AskedOGS, AskedBulwarkWorld, AskedWorldOGSInternational, Changed,"
                     " ChangedBy, Allocated, OverAllocated, SaveKey, QuoteID)"
                     " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
                     values);
    } else {
        database.run(u"UPDATE quotes SET Revision = ?, ProductID = ?, ClientID = ?, Description = ?,"
                     " Amount = ?, ByAmount = ?, AskedWorldOGS = ?, AskedOGS = ?, AskedBulwarkWorld = ?,"
                     " AskedWorldOGSInternational = ?, Changed = ?, ChangedBy = ?, Allocated = ?,"
                     " OverAllocated = ?, SaveKey = ?, DeletedAt = NULL, DeletedBy = '' WHERE QuoteID = ?"_s,
                     values);
        database.run(u"DELETE FROM quote_details WHERE QuoteID = ?"_s, {quote.quoteID});
        database.run(u"DELETE FROM quote_funds WHERE QuoteID = ?"_s, {quote.quoteID});
    }
    BulkInsert details(database, u"quote_details"_s, {u"QuoteID"_s, u"DetailName"_s, u"DetailValue"_s});
    for (auto detail = quote.details.cbegin(); detail != quote.details.cend(); ++detail)
        details.add({quote.quoteID, detail.key(), detail.value()});
    details.finish();
    BulkInsert funds(
        database, u"quote_funds"_s,
        {u"QuoteID"_s, u"Position"_s, u"FundID"_s, u"FundName"_s, u"Amount"_s, u"FundPercent"_s});
    int position = 0;
    for (const QuotedFund &fund : quote.funds)
        funds.add(
            {quote.quoteID, position++, fund.fundID, fund.name, rawOf(fund.amount), rawOf(fund.percent)});
    funds.finish();
}

/// Permanently deletes the quotes that have been in the bin long enough.
void QuoteStore::Private::emptyBin()
{
    const QDateTime oldest = QDateTime::currentDateTimeUtc().addDays(-DaysInBin);
    database.run(u"DELETE FROM quotes WHERE DeletedAt < ?"_s, {textOf(oldest)});
}

/// Runs a statement that changes one quote; throws QuoteGone with the message @p otherwise when it changes
/// none.
void QuoteStore::Private::changeOne(qint64 quoteID, const QString &statement, const QVariantList &values,
                                    const QString &otherwise)
{
    Transaction transaction(database, Transaction::Write);
    database.announceChange();
    const QSqlQuery query = database.run(statement, values + QVariantList{quoteID});
    if (query.numRowsAffected() != 1)
        throw QuoteGone(otherwise);
    transaction.commit();
}

void QuoteStore::Private::writeDraft(const QString &key, const Quote &quote)
{
    database.run(u"INSERT INTO drafts (DraftKey, InstanceID, Person, Kept, Content)"
                 " VALUES (?, ?, ?, ?, ?) ON CONFLICT (DraftKey) DO UPDATE SET"
                 " InstanceID = excluded.InstanceID, Person = excluded.Person,"
                 " Kept = excluded.Kept, Content = excluded.Content"_s,
                 {key, instance.id(), RunningInstance::person(), textOf(QDateTime::currentDateTimeUtc()),
                  quoteToJson(quote)});
}

void QuoteStore::Private::deleteDraft(const QString &key)
{
    database.run(u"DELETE FROM drafts WHERE DraftKey = ?"_s, {key});
}

void QuoteStore::Private::flushDrafts() noexcept
{
    while (!waitingDrafts.isEmpty()) {
        const QString key = waitingDrafts.firstKey();
        const std::optional<Quote> quote = waitingDrafts.take(key);
        try {
            if (quote)
                writeDraft(key, *quote);
            else
                deleteDraft(key);
        } catch (const std::exception &) {
            // Nobody waits for this result; the next key press reports a continuing problem.
        }
    }
}

QuoteStore::QuoteStore(std::unique_ptr<Private> impl) : d(std::move(impl)) {}

std::unique_ptr<QuoteStore> QuoteStore::open(const StoreLocation &location,
                                             std::shared_ptr<LineCutter> cutter)
{
    auto impl = std::make_unique<Private>(location, std::move(cutter));
    Private *const store = impl.get();
    store->database.setWhenConnected([store] { store->instance.renew(); });
    store->database.setWhenIdle([store] { store->flushDrafts(); });
    store->emptyBin();
    CatalogueDatabase::fillWhenEmpty(store->database);
    store->database.changedElsewhere();
    return std::unique_ptr<QuoteStore>(new QuoteStore(std::move(impl)));
}

QuoteStore::~QuoteStore()
{
    d->database.setWhenConnected({});
    d->database.setWhenIdle({});
}

Database &QuoteStore::database() noexcept
{
    return d->database;
}

const QString &QuoteStore::connectionName() const noexcept
{
    return d->database.connectionName();
}

const StoreLocation &QuoteStore::location() const noexcept
{
    return d->database.location();
}

QList<QuoteSummary> QuoteStore::quotes()
{
    QList<QuoteSummary> result;
    QSqlQuery query = d->database.run(
        summaryQuery() + u" WHERE Q.DeletedAt IS NULL ORDER BY Q.Changed DESC, Q.QuoteID DESC"_s);
    while (d->database.next(query))
        result.append(summaryOf(query));
    return result;
}

QList<DeletedQuote> QuoteStore::deletedQuotes()
{
    QList<DeletedQuote> result;
    QSqlQuery query = d->database.run(
        summaryQuery() + u" WHERE Q.DeletedAt IS NOT NULL ORDER BY Q.DeletedAt DESC, Q.QuoteID DESC"_s);
    while (d->database.next(query))
        result.append({summaryOf(query), timeOf(query.value(SummaryColumns)),
                       query.value(SummaryColumns + 1).toString()});
    return result;
}

Quote QuoteStore::quote(qint64 quoteID)
{
    Transaction transaction(d->database, Transaction::Read);
    bool removed = false;
    std::optional<Quote> found = d->find(quoteID, removed);
    transaction.commit();
    if (!found || removed)
        throw StoreError(Text::tr("The quote is no longer there; somebody else has deleted it."));
    return *found;
}

/// Sets id and revision of a quote that is about to be saved, to those of the quote that it replaces. Returns
/// true when it replaces none. Throws QuoteChangedElsewhere.
bool QuoteStore::Private::takePlace(Quote &saved, const Quote &ours, SaveMode mode)
{
    if (!ours.saveKey.isEmpty()) {
        // The server may have been lost during an earlier attempt. If that one was stored, this save
        // continues from it.
        QSqlQuery earlier =
            database.run(u"SELECT QuoteID, Revision FROM quotes WHERE SaveKey = ?"_s, {ours.saveKey});
        if (database.next(earlier)) {
            saved.quoteID = earlier.value(0).toLongLong();
            saved.revision = earlier.value(1).toInt();
        }
    }
    if (saved.quoteID == 0) {
        saved.quoteID = database.newID();
        saved.revision = 0;
        return true;
    }
    bool removed = false;
    const std::optional<Quote> stored = find(saved.quoteID, removed);
    if (mode == SaveMode::OnlyIfUnchanged && (!stored || removed))
        throw QuoteChangedElsewhere(Text::tr("The quote has been deleted by somebody else."),
                                    stored.value_or(ours), true);
    if (mode == SaveMode::OnlyIfUnchanged && stored->revision != saved.revision)
        throw QuoteChangedElsewhere(
            Text::tr("The quote has been changed by %1 in the meantime.").arg(stored->changedBy), *stored,
            false);
    // A permanently deleted quote comes back with its old id, which is never reused.
    if (stored)
        saved.revision = stored->revision;
    return !stored;
}

qint64 QuoteStore::save(Quote &quote, SaveMode mode, const QString &draftKey)
{
    Quote saved = quote;
    if (mode == SaveMode::AsCopy)
        saved.quoteID = 0;
    // All attempts at a save use one key, so that the next one finds whichever reached the database.
    if (saved.saveKey.isEmpty())
        saved.saveKey = newSaveKey();
    saved.changed = QDateTime::currentDateTimeUtc();
    saved.changedBy = RunningInstance::person();

    Transaction transaction(d->database, Transaction::Write);
    d->database.announceChange();
    d->checkClient(saved.clientID);
    const bool isNew = d->takePlace(saved, quote, mode);
    ++saved.revision;
    d->write(saved, isNew);
    if (!draftKey.isEmpty())
        d->deleteDraft(draftKey);
    try {
        transaction.commit();
    } catch (const StoreUnreachable &) {
        quote.saveKey = saved.saveKey;
        throw;
    }
    saved.saveKey.clear();
    quote = saved;
    return quote.quoteID;
}

void QuoteStore::remove(qint64 quoteID)
{
    d->changeOne(quoteID,
                 u"UPDATE quotes SET DeletedAt = ?, DeletedBy = ? WHERE DeletedAt IS NULL AND QuoteID = ?"_s,
                 {textOf(QDateTime::currentDateTimeUtc()), RunningInstance::person()},
                 Text::tr("The quote is no longer there; somebody else has deleted it."));
}

void QuoteStore::restore(qint64 quoteID)
{
    d->changeOne(
        quoteID,
        u"UPDATE quotes SET DeletedAt = NULL, DeletedBy = '' WHERE DeletedAt IS NOT NULL AND QuoteID = ?"_s,
        {},
        Text::tr("The quote is no longer among the deleted quotes; somebody else has brought it back or "
                 "deleted it for good."));
}

void QuoteStore::deleteForGood(qint64 quoteID)
{
    d->changeOne(quoteID, u"DELETE FROM quotes WHERE DeletedAt IS NOT NULL AND QuoteID = ?"_s, {},
                 Text::tr("The quote is no longer among the deleted quotes; somebody else has brought it "
                          "back or deleted it for good."));
}

QString QuoteStore::newSaveKey()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

qint64 QuoteStore::duplicate(qint64 quoteID, const QString &saveKey)
{
    Quote copy = quote(quoteID);
    copy.saveKey = saveKey;
    copy.description = Text::tr("%1 (copy)").arg(copy.description).trimmed();
    return save(copy, SaveMode::AsCopy);
}

QList<Client> QuoteStore::clients()
{
    QList<Client> result;
    QSqlQuery query = d->database.run(u"SELECT %1 FROM clients ORDER BY ClientID"_s.arg(ClientColumns()));
    while (d->database.next(query))
        result.append(clientOf(query));
    // Sorted without regard to case ("de Villiers" among the D), because the engines sort differently.
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(result.begin(), result.end(), [&collator](const Client &a, const Client &b) {
        const int bySurname = collator.compare(a.surname, b.surname);
        return bySurname != 0 ? bySurname < 0 : collator.compare(a.firstNames, b.firstNames) < 0;
    });
    return result;
}

Client QuoteStore::client(qint64 clientID)
{
    QSqlQuery query =
        d->database.run(u"SELECT %1 FROM clients WHERE ClientID = ?"_s.arg(ClientColumns()), {clientID});
    if (!d->database.next(query))
        throw StoreError(Text::tr("The client is no longer there; somebody else has deleted it."));
    return clientOf(query);
}

qint64 QuoteStore::saveClient(Client &client)
{
    qint64 id = client.clientID;
    Transaction transaction(d->database, Transaction::Write);
    d->database.announceChange();
    if (id == 0) {
        id = client.takenID != 0 ? client.takenID : d->database.newID();
        d->database.run(u"INSERT INTO clients (Surname, FirstNames, IDNumber, DateOfBirth, EMail,"
                        " Telephone, ClientID) VALUES (?, ?, ?, ?, ?, ?, ?)"
                        " ON CONFLICT (ClientID) DO UPDATE SET Surname = excluded.Surname,"
                        " FirstNames = excluded.FirstNames, IDNumber = excluded.IDNumber,"
                        " DateOfBirth = excluded.DateOfBirth, EMail = excluded.EMail,"
                        " Telephone = excluded.Telephone"_s,
                        clientValues(client) << id);
    } else {
        const QSqlQuery query =
            d->database.run(u"UPDATE clients SET Surname = ?, FirstNames = ?, IDNumber = ?, DateOfBirth = ?,"
                            " EMail = ?, Telephone = ? WHERE ClientID = ?"_s,
                            clientValues(client) << id);
        if (query.numRowsAffected() != 1)
            throw StoreError(Text::tr("The client is no longer there; somebody else has deleted it."));
    }
    transaction.commit();
    client.clientID = id;
    client.takenID = 0;
    return id;
}

qint64 QuoteStore::newClientID()
{
    Transaction transaction(d->database, Transaction::Write);
    const qint64 id = d->database.newID();
    transaction.commit();
    return id;
}

void QuoteStore::removeClient(qint64 clientID)
{
    Transaction transaction(d->database, Transaction::Write);
    d->database.announceChange();
    const auto hasQuotes = [&](const char *where) {
        return d->database
                   .single(u"SELECT count(*) FROM quotes WHERE ClientID = ?"_s + QLatin1StringView(where),
                           {clientID})
                   .toInt() > 0;
    };
    if (hasQuotes(" AND DeletedAt IS NULL"))
        throw StoreError(
            Text::tr("The client cannot be deleted while there are quotes for this client. Delete "
                     "these quotes first."));
    if (hasQuotes(""))
        throw StoreError(
            Text::tr("The client cannot be deleted yet: there are deleted quotes for this client. "
                     "Choose Deleted Quotes, delete them for good, and then delete the client."));
    d->database.run(u"DELETE FROM clients WHERE ClientID = ?"_s, {clientID});
    transaction.commit();
}

QString QuoteStore::newDraftKey()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

void QuoteStore::keepDraft(const QString &key, const Quote &quote)
{
    if (d->database.isBusy())
        d->waitingDrafts.insert(key, quote);
    else
        d->writeDraft(key, quote);
}

void QuoteStore::dropDraft(const QString &key)
{
    if (d->database.isBusy())
        d->waitingDrafts.insert(key, std::nullopt);
    else
        d->deleteDraft(key);
}

QList<Draft> QuoteStore::abandonedDrafts()
{
    QList<Draft> result;
    QMap<qint64, bool> running;
    QSqlQuery query = d->database.run(u"SELECT DraftKey, InstanceID, Kept, Content FROM drafts WHERE"
                                      " Person = ? AND InstanceID <> ? ORDER BY Kept DESC"_s,
                                      {RunningInstance::person(), d->instance.id()});
    while (d->database.next(query)) {
        const qint64 id = query.value(1).toLongLong();
        if (!running.contains(id))
            running.insert(id, d->instance.isRunning(id));
        if (running.value(id))
            continue;
        try {
            result.append({query.value(0).toString(), quoteFromJson(query.value(3).toString()),
                           timeOf(query.value(2))});
        } catch (const StoreError &) {
            // A damaged draft must not prevent the recovery of the others.
        }
    }
    return result;
}

Quote QuoteStore::adoptDraft(const QString &key)
{
    Transaction transaction(d->database, Transaction::Write);
    d->database.announceChange();
    QSqlQuery query = d->database.run(u"SELECT InstanceID, Content FROM drafts WHERE DraftKey = ?"_s, {key});
    if (!d->database.next(query) || d->instance.isRunning(query.value(0).toLongLong()))
        throw StoreError(
            Text::tr("The draft has been opened in another window of the program. Go on there."));
    Quote quote = quoteFromJson(query.value(1).toString());
    query.finish();
    d->database.run(u"UPDATE drafts SET InstanceID = ? WHERE DraftKey = ?"_s, {d->instance.id(), key});
    transaction.commit();
    return quote;
}

bool QuoteStore::changedElsewhere()
{
    return d->database.changedElsewhere();
}

} // namespace QuoteDesk
