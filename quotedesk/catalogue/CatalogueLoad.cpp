#include "catalogue/CatalogueLoad.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CsvReader.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace QuoteDesk
{
namespace
{

/// Texts of this file for the person who chose the catalogue.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueLoad)
};

[[noreturn]] void refuseLine(int line, const QString &reason)
{
    throw CatalogueError(Text::tr("line %1: %2").arg(line).arg(reason));
}

/// A statement prepared once and run for many rows.
class Insert
{
public:
    Insert(const QSqlDatabase &database, const QString &table, const QStringList &columns) : m_query(database)
    {
        QStringList marks;
        marks.fill(QStringLiteral("?"), columns.size());
        if (!m_query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                 .arg(table, columns.join(u", "), marks.join(u", "))))
            throw CatalogueError(m_query.lastError().text());
    }

    template <class... Values> void row(const Values &...values)
    {
        (m_query.addBindValue(values), ...);
        run();
    }

    void run(const QStringList &fields)
    {
        for (const QString &field : fields)
            m_query.addBindValue(field);
        run();
    }

private:
    void run()
    {
        if (!m_query.exec())
            throw CatalogueError(m_query.lastError().text());
    }

    QSqlQuery m_query;
};

int readId(const QString &field, const QString &column, int line)
{
    bool isNumber = false;
    const int id = field.toInt(&isNumber);
    // -1 is how "no such fund" is said throughout, and 0 is no group.
    if (!isNumber || id < 1) {
        const QString shown = field.size() > 40 ? field.left(40) + u'…' : field;
        refuseLine(
            line,
            Text::tr("%1 \"%2\" is no whole number from 1 to 2147483647").arg(column, shown.simplified()));
    }
    return id;
}

/// A group type or fund group as its first line gave it.
struct Parent {
    QString name;
    int parentID = 0;
};

/// True when @p id is new; refuses a later line that says something else about it than the first one.
bool isNew(QHash<int, Parent> &known, int id, const Parent &parent, const QString &column, int line)
{
    const auto found = known.constFind(id);
    if (found == known.cend()) {
        known.insert(id, parent);
        return true;
    }
    if (found->name != parent.name || found->parentID != parent.parentID)
        refuseLine(line, Text::tr("%1 %2 is not what an earlier line says it is").arg(column).arg(id));
    return false;
}

} // namespace

Transaction::Transaction(const QSqlDatabase &database) : m_database(database)
{
    if (!m_database.transaction())
        throw CatalogueError(m_database.lastError().text());
}

Transaction::~Transaction()
{
    if (m_open)
        m_database.rollback();
}

void Transaction::commit()
{
    if (!m_database.commit())
        throw CatalogueError(m_database.lastError().text());
    m_open = false;
}

void runStatement(const QSqlDatabase &database, const QString &statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement))
        throw CatalogueError(query.lastError().text());
}

void loadTable(const QSqlDatabase &database, const QString &table, const QString &csv)
{
    CsvReader reader(csv);
    if (!reader.readRecord())
        refuseLine(1, Text::tr("the column names are missing"));
    const QStringList columns = reader.fields();
    Insert insert(database, table, columns);
    while (reader.readRecord()) {
        if (reader.fields().size() != columns.size())
            refuseLine(reader.line(),
                       Text::tr("%1 fields instead of %2").arg(reader.fields().size()).arg(columns.size()));
        insert.run(reader.fields());
    }
}

void importCatalogue(const QSqlDatabase &database, const QString &csv)
{
    const QStringList columns{QStringLiteral("GroupTypeID"), QStringLiteral("GroupTypeDesc"),
                              QStringLiteral("FundGroupID"), QStringLiteral("FundGroupName"),
                              QStringLiteral("FundID"),      QStringLiteral("FundName")};
    CsvReader reader(csv);
    if (!reader.readRecord() || reader.fields() != columns)
        refuseLine(
            1, Text::tr("this is no fund catalogue; its first line is to be \"%1\"").arg(columns.join(u',')));

    for (const char *table : {"fund_messages", "funds", "fund_groups", "group_types"})
        runStatement(database, QStringLiteral("DELETE FROM ") + QLatin1StringView(table));
    QStringList products;
    QStringList productGroups;
    QSqlQuery query(QStringLiteral("SELECT ProductID, ProductGroupID FROM products ORDER BY rowid"),
                    database);
    while (query.next()) {
        products.append(query.value(0).toString());
        productGroups.append(query.value(1).toString());
    }
    productGroups.removeDuplicates();
    const QString allProducts = products.join(u' ');
    const QString allProductGroups = productGroups.join(u' ');

    Insert types(database, QStringLiteral("group_types"),
                 {QStringLiteral("GroupTypeID"), QStringLiteral("GroupTypeDesc"),
                  QStringLiteral("GroupTypeDesc_AFR")});
    Insert groups(database, QStringLiteral("fund_groups"),
                  {QStringLiteral("FundGroupID"), QStringLiteral("GroupTypeID"),
                   QStringLiteral("FundGroupName"), QStringLiteral("FundGroupName_AFR"),
                   QStringLiteral("ProductGroups"), QStringLiteral("OfferedBy")});
    Insert funds(database, QStringLiteral("funds"),
                 {QStringLiteral("FundID"), QStringLiteral("FundGroupID"), QStringLiteral("FundName"),
                  QStringLiteral("FundName_AFR"), QStringLiteral("MainframeID")});

    QHash<int, Parent> knownTypes;
    QHash<int, Parent> knownGroups;
    QSet<QPair<int, int>> knownFunds;
    while (reader.readRecord()) {
        const int line = reader.line();
        const QStringList &fields = reader.fields();
        if (fields.size() != columns.size())
            refuseLine(line, Text::tr("%1 fields instead of %2").arg(fields.size()).arg(columns.size()));
        for (const int name : {1, 3, 5}) {
            if (fields.at(name).trimmed().isEmpty())
                refuseLine(line, Text::tr("%1 is blank").arg(columns.at(name)));
        }
        const int type = readId(fields.at(0), columns.at(0), line);
        const int group = readId(fields.at(2), columns.at(2), line);
        const int fund = readId(fields.at(4), columns.at(4), line);

        if (isNew(knownTypes, type, {fields.at(1), 0}, columns.at(0), line))
            types.row(type, fields.at(1), fields.at(1));
        if (isNew(knownGroups, group, {fields.at(3), type}, columns.at(2), line))
            groups.row(group, type, fields.at(3), fields.at(3), allProductGroups, allProducts);
        if (knownFunds.contains({fund, group}))
            refuseLine(line, Text::tr("fund %1 is already in fund group %2").arg(fund).arg(group));
        knownFunds.insert({fund, group});
        funds.row(fund, group, fields.at(5), fields.at(5), QString::number(fund));
    }
    if (knownFunds.isEmpty())
        refuseLine(2, Text::tr("the catalogue holds no fund"));
}

} // namespace QuoteDesk
