#include "catalogue/CatalogueImport.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueText.h"
#include "catalogue/CsvReader.h"
#include "catalogue/ShownText.h"
#include "database/Database.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The context of this file's messages.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueImport)
};

/// The share of reading in the progress, in thousandths; writing has the rest.
constexpr int ReadShare = 250;
constexpr int AllDone = 1000;
/// The number of lines or rows between two calls of the progress function.
constexpr int ReportEvery = 1000;

/// Calls the progress function when the progress has changed; returns false after a cancellation.
class Reporter
{
public:
    Reporter(const ImportProgress &progress, int from, int to) : m_progress(progress), m_from(from), m_to(to)
    {
    }
    bool at(qsizetype done, qsizetype total)
    {
        return !m_progress ||
               m_progress(m_from + static_cast<int>((m_to - m_from) * done / std::max<qsizetype>(1, total)));
    }

private:
    const ImportProgress &m_progress;
    int m_from;
    int m_to;
};

/// A longer fund name shows that the file is not a catalogue.
constexpr qsizetype longestName = 250;

/// The columns in the file's order.
enum Column { TypeID, TypeName, GroupID, GroupName, FundID, FundName, ColumnCount };

QStringList columnNames()
{
    return {u"GroupTypeID"_s,   u"GroupTypeDesc"_s, u"FundGroupID"_s,
            u"FundGroupName"_s, u"FundID"_s,        u"FundName"_s};
}

int readId(const QStringList &fields, Column column)
{
    const QString &field = fields.at(column);
    bool isNumber = false;
    const int id = field.toInt(&isNumber);
    // -1 means "no such fund" everywhere, and 0 means no group.
    if (!isNumber || id < 1) {
        throw CatalogueError(Text::tr("%1 \"%2\" is not a whole number from 1 to 2147483647")
                                 .arg(columnNames().at(column), shownText(field, 40)));
    }
    return id;
}

/// Throws CatalogueError for a line with a wrong number of fields or with an invalid text.
void checkTexts(const QStringList &fields)
{
    for (const QString &field : fields) {
        if (field.contains(QChar::ReplacementCharacter) || field.contains(QChar::Null))
            throw CatalogueError(Text::tr("this is not text in UTF-8: \"%1\"")
                                     .arg(shownText(QString(field).remove(QChar::Null), 40)));
    }
    if (fields.size() != ColumnCount)
        throw CatalogueError(Text::tr("%1 fields instead of %2: \"%3\"")
                                 .arg(fields.size())
                                 .arg(int{ColumnCount})
                                 .arg(shownText(fields.join(u','), 60)));
    for (const Column name : {TypeName, GroupName, FundName}) {
        if (fields.at(name).trimmed().isEmpty())
            throw CatalogueError(Text::tr("%1 is blank").arg(columnNames().at(name)));
        if (fields.at(name).size() > longestName)
            throw CatalogueError(Text::tr("%1 has %2 characters; at most %3 fit")
                                     .arg(columnNames().at(name))
                                     .arg(fields.at(name).size())
                                     .arg(longestName));
    }
}

void clearTables(Database &database, std::initializer_list<const char *> tables)
{
    for (const char *table : tables)
        database.run(u"DELETE FROM "_s + QLatin1StringView(table));
}

/// Whether the table stores the source's order as a number in its first column.
enum class RowNumbers { Kept, None };

/// Appends the records of a source file; its first record has the column names.
void loadTable(Database &database, const QString &table, const QString &csv, RowNumbers numbers)
{
    CsvReader reader(csv);
    reader.readRecord();
    const bool isNumbered = numbers == RowNumbers::Kept;
    BulkInsert insert(database, table,
                      (isNumbered ? QStringList(u"RowNo"_s) : QStringList()) + reader.fields());
    for (int row = 1; reader.readRecord(); ++row) {
        QVariantList values;
        if (isNumbered)
            values.append(row);
        for (const QString &field : reader.fields())
            values.append(field);
        insert.add(values);
    }
    insert.finish();
}

} // namespace

CatalogueImport::CatalogueImport(QString csv) : m_csv(std::move(csv)) {}

bool CatalogueImport::read(const ImportProgress &progress)
{
    const QStringList columns = columnNames();
    CsvReader reader(m_csv);
    bool isCatalogue = false;
    try {
        isCatalogue = reader.readRecord() && reader.fields() == columns;
    } catch (const CatalogueError &) {
        // The first record is not readable.
    }
    if (!isCatalogue)
        refuseHeading(reader.fields());

    Reporter reporter(progress, 0, ReadShare);
    for (;;) {
        if (m_report.linesRead % ReportEvery == 0 && !reporter.at(reader.position(), m_csv.size())) {
            m_report.cancelled = true;
            return false;
        }
        try {
            if (!reader.readRecord())
                return true;
            ++m_report.linesRead;
            take(reader.fields(), reader.line());
        } catch (const CsvError &error) {
            ++m_report.linesRead;
            m_report.refused.append({reader.line(), error.reason()});
            reader.skipLine();
        } catch (const CatalogueError &error) {
            m_report.refused.append({reader.line(), error.message()});
        }
    }
}

/// Reports what the file has instead of the column names. @p fields are those of the first record, as far as
/// it could be read.
void CatalogueImport::refuseHeading(const QStringList &fields) const
{
    const QStringList columns = columnNames();
    const QString wanted = columns.join(u',');
    if (m_csv.trimmed().isEmpty())
        throw CatalogueError(
            Text::tr("line 1: this is not a fund catalogue: the file is empty; its first line must be \"%1\"")
                .arg(wanted));
    const QString line = m_csv.left(m_csv.indexOf(u'\n')).trimmed();
    const auto isColumn = [&columns](const QString &field) {
        return columns.contains(field.trimmed(), Qt::CaseInsensitive);
    };
    for (const QChar separator : {u';', u'\t', u'|'}) {
        const QStringList parts = line.split(separator);
        if (parts.size() > 1 && std::any_of(parts.cbegin(), parts.cend(), isColumn))
            throw CatalogueError(Text::tr("line 1: this is not a fund catalogue: its columns are separated "
                                          "by \"%1\" and not by commas; its first line must be \"%2\"")
                                     .arg(separator == u'\t' ? Text::tr("Tab") : QString(separator), wanted));
    }
    if (std::any_of(fields.cbegin(), fields.cend(), isColumn))
        throw CatalogueError(
            Text::tr(
                "line 1: this is not a fund catalogue: its columns are \"%1\"; its first line must be \"%2\"")
                .arg(shownText(fields.join(u',')), wanted));
    throw CatalogueError(
        Text::tr("line 1: this is not a fund catalogue: its first line is \"%1\"; it must be \"%2\"")
            .arg(shownText(line), wanted));
}

/// Stores one line, or throws CatalogueError with the reason why it is bad.
void CatalogueImport::take(const QStringList &fields, int line)
{
    checkTexts(fields);
    const int type = readId(fields, TypeID);
    const int group = readId(fields, GroupID);
    const int fund = readId(fields, FundID);

    const auto checkName = [&fields](Column column, Column name, int id, const auto &known) {
        if (known.name != fields.at(name))
            throw CatalogueError(Text::tr("%1 %2 is called \"%3\", and \"%4\" on line %5")
                                     .arg(columnNames().at(column))
                                     .arg(id)
                                     .arg(shownText(fields.at(name), 60), shownText(known.name, 60))
                                     .arg(known.line));
    };
    const qsizetype typeAt = m_typeAt.value(type, -1);
    if (typeAt >= 0)
        checkName(TypeID, TypeName, type, m_types.at(typeAt));
    const qsizetype groupAt = m_groupAt.value(group, -1);
    if (groupAt >= 0) {
        const Group &known = m_groups.at(groupAt);
        if (known.typeID != type)
            throw CatalogueError(Text::tr("FundGroupID %1 is of GroupTypeID %2, and of %3 on line %4")
                                     .arg(group)
                                     .arg(type)
                                     .arg(known.typeID)
                                     .arg(known.line));
        checkName(GroupID, GroupName, group, known);
    }
    if (const int before = m_known.value({fund, group}); before > 0)
        throw CatalogueError(
            Text::tr("fund %1 is already in fund group %2, by line %3").arg(fund).arg(group).arg(before));

    if (typeAt < 0) {
        m_typeAt.insert(type, m_types.size());
        m_types.append({type, fields.at(TypeName), line});
    }
    if (groupAt < 0) {
        m_groupAt.insert(group, m_groups.size());
        m_groups.append({group, type, fields.at(GroupName), line});
    }
    m_known.insert({fund, group}, line);
    m_funds.append({fund, group, fields.at(FundName)});
}

ImportLoss CatalogueImport::loss(Database &database) const
{
    QHash<int, const Fund *> incoming;
    incoming.reserve(m_funds.size());
    for (const Fund &fund : m_funds)
        incoming.insert(fund.id, &fund);
    ImportLoss loss;
    loss.incoming = static_cast<int>(incoming.size());
    QSet<int> seen;
    QSet<int> lost;
    {
        // By fund id: a fund in several groups has several rows and counts once.
        QSqlQuery query = database.run(u"SELECT FundID, FundName, FundName_AFR FROM funds"_s);
        while (database.next(query)) {
            const int id = query.value(0).toInt();
            if (seen.contains(id))
                continue;
            seen.insert(id);
            const Fund *const fund = incoming.value(id);
            const auto isCalled = [&query, fund](int column) {
                return query.value(column).toString().trimmed() == fund->name.trimmed();
            };
            if (fund && (isCalled(1) || isCalled(2)))
                continue;
            lost.insert(id);
            ++(fund ? loss.renamed : loss.gone);
        }
    }
    loss.offered = static_cast<int>(seen.size());
    if (lost.isEmpty())
        return loss;
    QSet<qint64> quotes;
    QSqlQuery query =
        database.run(u"SELECT F.QuoteID, F.FundID FROM quote_funds F JOIN quotes Q ON Q.QuoteID = F.QuoteID"
                     " WHERE Q.DeletedAt IS NULL"_s);
    while (database.next(query)) {
        if (lost.contains(query.value(1).toInt()))
            quotes.insert(query.value(0).toLongLong());
    }
    loss.quotes = static_cast<int>(quotes.size());
    return loss;
}

bool CatalogueImport::write(Database &database, const ImportProgress &progress)
{
    if (m_funds.isEmpty())
        return true;
    Transaction transaction(database, Transaction::Write);
    database.announceChange();
    clearTables(database, {"fund_messages", "funds", "fund_group_products", "fund_group_product_groups",
                           "fund_groups", "group_types"});
    BulkInsert types(database, u"group_types"_s,
                     {u"RowNo"_s, u"GroupTypeID"_s, u"GroupTypeDesc"_s, u"GroupTypeDesc_AFR"_s});
    int row = 0;
    for (const GroupType &type : std::as_const(m_types))
        types.add({++row, type.id, type.name, type.name});
    types.finish();
    BulkInsert groups(
        database, u"fund_groups"_s,
        {u"RowNo"_s, u"FundGroupID"_s, u"GroupTypeID"_s, u"FundGroupName"_s, u"FundGroupName_AFR"_s});
    row = 0;
    for (const Group &group : std::as_const(m_groups))
        groups.add({++row, group.id, group.typeID, group.name, group.name});
    groups.finish();
    database.run(u"INSERT INTO fund_group_products (ProductID, FundGroupID)"
                 " SELECT P.ProductID, G.FundGroupID FROM products P CROSS JOIN fund_groups G"_s);
    database.run(
        u"INSERT INTO fund_group_product_groups (ProductGroupID, FundGroupID)"
        " SELECT DISTINCT P.ProductGroupID, G.FundGroupID FROM products P CROSS JOIN fund_groups G"_s);
    BulkInsert funds(
        database, u"funds"_s,
        {u"RowNo"_s, u"FundID"_s, u"FundGroupID"_s, u"FundName"_s, u"FundName_AFR"_s, u"MainframeID"_s});
    Reporter reporter(progress, ReadShare, AllDone);
    row = 0;
    for (const Fund &fund : std::as_const(m_funds)) {
        if (row % ReportEvery == 0 && !reporter.at(row, m_funds.size())) {
            m_report.cancelled = true;
            return false;
        }
        funds.add({++row, fund.id, fund.groupID, fund.name, fund.name, QString::number(fund.id)});
    }
    funds.finish();
    database.run(u"UPDATE store_state SET CatalogueDate = ?"_s,
                 {QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
    // The last opportunity to cancel.
    if (!reporter.at(row, m_funds.size())) {
        m_report.cancelled = true;
        return false;
    }
    transaction.commit();
    m_report.imported = row;
    return true;
}

void loadEmbeddedCatalogue(Database &database)
{
    clearTables(database, {"fund_messages", "funds", "fund_group_products", "fund_group_product_groups",
                           "fund_groups", "group_types", "products"});
    const struct {
        const char *table;
        QByteArrayView csv;
        RowNumbers numbers;
    } sources[] = {{"products", CatalogueText::products(), RowNumbers::Kept},
                   {"group_types", CatalogueText::groupTypes(), RowNumbers::Kept},
                   {"fund_groups", CatalogueText::fundGroups(), RowNumbers::Kept},
                   {"fund_group_product_groups", CatalogueText::fundGroupProductGroups(), RowNumbers::None},
                   {"fund_group_products", CatalogueText::fundGroupProducts(), RowNumbers::None},
                   {"funds", CatalogueText::funds(), RowNumbers::Kept},
                   {"fund_messages", CatalogueText::fundMessages(), RowNumbers::Kept}};
    for (const auto &source : sources)
        loadTable(database, QString::fromLatin1(source.table), QString::fromUtf8(source.csv), source.numbers);
}

} // namespace QuoteDesk
