#include "catalogue/CatalogueCopy.h"

#include "database/Database.h"

#include <QSqlRecord>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// Each table refers to earlier ones only.
QStringList catalogueTables()
{
    return {u"products"_s,
            u"group_types"_s,
            u"fund_groups"_s,
            u"fund_group_product_groups"_s,
            u"fund_group_products"_s,
            u"funds"_s,
            u"fund_messages"_s};
}

} // namespace

CatalogueCopy CatalogueCopy::of(Database &database)
{
    CatalogueCopy copy;
    Transaction transaction(database, Transaction::Read);
    for (const QString &name : catalogueTables()) {
        // Where the order matters, the first column has the row's number.
        QSqlQuery query = database.run(u"SELECT * FROM %1 ORDER BY 1"_s.arg(name));
        const QSqlRecord columns = query.record();
        Table table{name, {}, {}};
        for (int i = 0; i < columns.count(); ++i)
            table.columns.append(columns.fieldName(i));
        while (database.next(query)) {
            QVariantList row;
            row.reserve(columns.count());
            for (int i = 0; i < columns.count(); ++i)
                row.append(query.value(i));
            table.rows.append(std::move(row));
        }
        copy.tables.append(std::move(table));
    }
    copy.version = versionOf(database);
    transaction.commit();
    return copy;
}

void CatalogueCopy::writeTo(Database &database) const
{
    Transaction transaction(database, Transaction::Write);
    const QStringList names = catalogueTables();
    std::for_each(names.crbegin(), names.crend(),
                  [&database](const QString &name) { database.run(u"DELETE FROM "_s + name); });
    for (const Table &table : tables) {
        BulkInsert rows(database, table.name, table.columns);
        for (const QVariantList &row : table.rows)
            rows.add(row);
        rows.finish();
    }
    transaction.commit();
}

QString CatalogueCopy::versionOf(Database &database)
{
    if (database.engine() != Database::Engine::PostgreSQL)
        return {};
    // xmin is the transaction that wrote the row.
    QStringList parts;
    for (const QString &name : catalogueTables())
        parts.append(u"(SELECT count(*) || '-' || coalesce(max(xmin::text::bigint), 0) FROM %1)"_s.arg(name));
    return database.single(u"SELECT "_s + parts.join(u" || ' ' || "_s)).toString();
}

} // namespace QuoteDesk
