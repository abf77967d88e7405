#include "catalogue/CatalogueImport.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueText.h"
#include "catalogue/CsvReader.h"
#include "store/Database.h"

#include <QCoreApplication>

namespace QuoteDesk
{
namespace
{

/// Texts of this file for the person who chose the catalogue.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueImport)
};

/// Reading takes about a quarter of the time, writing the rest.
constexpr int ReadShare = 250;
constexpr int AllDone = 1000;
/// How many lines or rows go by between two reports.
constexpr int ReportEvery = 1000;

/// Tells the progress when it has moved on; false once it was cancelled.
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

/// The columns in the order in which every line has them.
enum Column { TypeID, TypeName, GroupID, GroupName, FundID, FundName, ColumnCount };

QStringList columnNames()
{
    return {QStringLiteral("GroupTypeID"),   QStringLiteral("GroupTypeDesc"), QStringLiteral("FundGroupID"),
            QStringLiteral("FundGroupName"), QStringLiteral("FundID"),        QStringLiteral("FundName")};
}

int readId(const QStringList &fields, Column column)
{
    const QString &field = fields.at(column);
    bool isNumber = false;
    const int id = field.toInt(&isNumber);
    // -1 is how "no such fund" is said throughout, and 0 is no group.
    if (!isNumber || id < 1) {
        const QString shown = field.size() > 40 ? field.left(40) + u'…' : field;
        throw CatalogueError(Text::tr("%1 \"%2\" is no whole number from 1 to 2147483647")
                                 .arg(columnNames().at(column), shown.simplified()));
    }
    return id;
}

void clearTables(Database &database, std::initializer_list<const char *> tables)
{
    for (const char *table : tables)
        database.run(QStringLiteral("DELETE FROM ") + QLatin1StringView(table));
}

/// Appends the records of a source file, whose first one names the columns.
void loadTable(Database &database, const QString &table, const QString &csv)
{
    CsvReader reader(csv);
    reader.readRecord();
    BulkInsert insert(database, table, QStringList(QStringLiteral("RowNo")) + reader.fields());
    int row = 0;
    while (reader.readRecord()) {
        QVariantList values{++row};
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
        // Not even a line of fields.
    }
    if (!isCatalogue)
        throw CatalogueError(Text::tr("line 1: this is no fund catalogue; its first line is to be \"%1\"")
                                 .arg(columns.join(u',')));

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
            take(reader.fields());
        } catch (const CsvError &error) {
            ++m_report.linesRead;
            m_report.refused.append({reader.line(), error.reason()});
            reader.skipLine();
        } catch (const CatalogueError &error) {
            m_report.refused.append({reader.line(), error.message()});
        }
    }
}

/// Takes over one line whole, or raises CatalogueError with what is wrong with it.
void CatalogueImport::take(const QStringList &fields)
{
    if (fields.size() != ColumnCount)
        throw CatalogueError(Text::tr("%1 fields instead of %2").arg(fields.size()).arg(int{ColumnCount}));
    for (const QString &field : fields) {
        if (field.contains(QChar::ReplacementCharacter) || field.contains(QChar::Null))
            throw CatalogueError(Text::tr("this is no text in UTF-8"));
    }
    for (const Column name : {TypeName, GroupName, FundName}) {
        if (fields.at(name).trimmed().isEmpty())
            throw CatalogueError(Text::tr("%1 is blank").arg(columnNames().at(name)));
    }
    const int type = readId(fields, TypeID);
    const int group = readId(fields, GroupID);
    const int fund = readId(fields, FundID);

    const auto contradicts = [](Column column, int id) {
        return CatalogueError(
            Text::tr("%1 %2 is not what an earlier line says it is").arg(columnNames().at(column)).arg(id));
    };
    const qsizetype typeAt = m_typeAt.value(type, -1);
    if (typeAt >= 0 && m_types.at(typeAt).name != fields.at(TypeName))
        throw contradicts(TypeID, type);
    const qsizetype groupAt = m_groupAt.value(group, -1);
    if (groupAt >= 0 &&
        (m_groups.at(groupAt).name != fields.at(GroupName) || m_groups.at(groupAt).typeID != type))
        throw contradicts(GroupID, group);
    if (m_known.contains({fund, group}))
        throw CatalogueError(Text::tr("fund %1 is already in fund group %2").arg(fund).arg(group));

    if (typeAt < 0) {
        m_typeAt.insert(type, m_types.size());
        m_types.append({type, fields.at(TypeName)});
    }
    if (groupAt < 0) {
        m_groupAt.insert(group, m_groups.size());
        m_groups.append({group, type, fields.at(GroupName)});
    }
    m_known.insert({fund, group});
    m_funds.append({fund, group, fields.at(FundName)});
}

bool CatalogueImport::write(Database &database, const ImportProgress &progress)
{
    if (m_funds.isEmpty())
        return true;
    Transaction transaction(database, Transaction::Write);
    database.countChange();
    QStringList products;
    QStringList productGroups;
    {
        QSqlQuery query =
            database.run(QStringLiteral("SELECT ProductID, ProductGroupID FROM products ORDER BY RowNo"));
        while (database.next(query)) {
            products.append(query.value(0).toString());
            productGroups.append(query.value(1).toString());
        }
    }
    productGroups.removeDuplicates();
    const QString allProducts = products.join(u' ');
    const QString allProductGroups = productGroups.join(u' ');

    clearTables(database, {"fund_messages", "funds", "fund_groups", "group_types"});
    BulkInsert types(database, QStringLiteral("group_types"),
                     {QStringLiteral("RowNo"), QStringLiteral("GroupTypeID"), QStringLiteral("GroupTypeDesc"),
                      QStringLiteral("GroupTypeDesc_AFR")});
    int row = 0;
    for (const GroupType &type : std::as_const(m_types))
        types.add({++row, type.id, type.name, type.name});
    types.finish();
    BulkInsert groups(database, QStringLiteral("fund_groups"),
                      {QStringLiteral("RowNo"), QStringLiteral("FundGroupID"), QStringLiteral("GroupTypeID"),
                       QStringLiteral("FundGroupName"), QStringLiteral("FundGroupName_AFR"),
                       QStringLiteral("ProductGroups"), QStringLiteral("OfferedBy")});
    row = 0;
    for (const Group &group : std::as_const(m_groups))
        groups.add({++row, group.id, group.typeID, group.name, group.name, allProductGroups, allProducts});
    groups.finish();
    BulkInsert funds(database, QStringLiteral("funds"),
                     {QStringLiteral("RowNo"), QStringLiteral("FundID"), QStringLiteral("FundGroupID"),
                      QStringLiteral("FundName"), QStringLiteral("FundName_AFR"),
                      QStringLiteral("MainframeID")});
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
    // The last moment to cancel: from here on it is done.
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
    clearTables(database, {"fund_messages", "funds", "fund_groups", "group_types", "products"});
    const struct {
        const char *table;
        QByteArrayView csv;
    } sources[] = {{"products", CatalogueText::products()},
                   {"group_types", CatalogueText::groupTypes()},
                   {"fund_groups", CatalogueText::fundGroups()},
                   {"funds", CatalogueText::funds()},
                   {"fund_messages", CatalogueText::fundMessages()}};
    for (const auto &source : sources)
        loadTable(database, QString::fromLatin1(source.table), QString::fromUtf8(source.csv));
}

} // namespace QuoteDesk
