#include "catalogue/CatalogueCopy.h"

#include "store/Database.h"

#include <QSqlRecord>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

/// In an order in which each refers to earlier ones only.
QStringList catalogueTables()
{
    return {QStringLiteral("products"), QStringLiteral("group_types"), QStringLiteral("fund_groups"),
            QStringLiteral("funds"), QStringLiteral("fund_messages")};
}

} // namespace

CatalogueCopy CatalogueCopy::of(Database &database)
{
    CatalogueCopy copy;
    Transaction transaction(database, Transaction::Read);
    for (const QString &name : catalogueTables()) {
        QSqlQuery query = database.run(QStringLiteral("SELECT * FROM %1 ORDER BY RowNo").arg(name));
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
                  [&database](const QString &name) { database.run(QStringLiteral("DELETE FROM ") + name); });
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
    // Every row knows the transaction that wrote it.
    QStringList parts;
    for (const QString &name : catalogueTables())
        parts.append(
            QStringLiteral("(SELECT count(*) || '-' || coalesce(max(xmin::text::bigint), 0) FROM %1)")
                .arg(name));
    return database.single(QStringLiteral("SELECT ") + parts.join(QStringLiteral(" || ' ' || "))).toString();
}

} // namespace QuoteDesk
