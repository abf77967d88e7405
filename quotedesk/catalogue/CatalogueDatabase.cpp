#include "catalogue/CatalogueDatabase.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueLoad.h"
#include "catalogue/CatalogueText.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace QuoteDesk
{

CatalogueDatabase::CatalogueDatabase()
    : m_connectionName(QStringLiteral("catalogue-") + QUuid::createUuid().toString(QUuid::Id128))
{
    try {
        build();
    } catch (...) {
        QSqlDatabase::removeDatabase(m_connectionName);
        throw;
    }
}

CatalogueDatabase::~CatalogueDatabase()
{
    QSqlDatabase::removeDatabase(m_connectionName);
}

QSqlDatabase CatalogueDatabase::database() const
{
    return QSqlDatabase::database(m_connectionName);
}

void CatalogueDatabase::build()
{
    QSqlDatabase memory = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    memory.setDatabaseName(QStringLiteral(":memory:"));
    if (!memory.open())
        throw CatalogueError(memory.lastError().text());

    Transaction transaction(memory);
    const QString schema = QString::fromUtf8(CatalogueText::schema());
    // A ";" at the end of a line ends a statement of the schema.
    for (const QString &statement : schema.split(QStringLiteral(";\n"), Qt::SkipEmptyParts))
        runStatement(memory, statement);
    const struct {
        const char *table;
        QByteArrayView csv;
    } sources[] = {{"products", CatalogueText::products()},
                   {"group_types", CatalogueText::groupTypes()},
                   {"fund_groups", CatalogueText::fundGroups()},
                   {"funds", CatalogueText::funds()},
                   {"fund_messages", CatalogueText::fundMessages()}};
    for (const auto &source : sources)
        loadTable(memory, QString::fromLatin1(source.table), QString::fromUtf8(source.csv));
    transaction.commit();
}

void CatalogueDatabase::importFile(const QString &path)
{
    try {
        const QString csv = readCatalogueFile(path);
        Transaction transaction(database());
        importCatalogue(database(), csv);
        transaction.commit();
    } catch (const CatalogueError &error) {
        throw CatalogueError(QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), error.message()));
    }
}

QList<Product> CatalogueDatabase::products() const
{
    QList<Product> result;
    QSqlQuery query(
        QStringLiteral("SELECT ProductID, ProductGroupID, ProductName FROM products ORDER BY rowid"),
        database());
    while (query.next())
        result.append({query.value(0).toInt(), query.value(1).toInt(), query.value(2).toString()});
    return result;
}

bool CatalogueDatabase::hasFund(int fundID) const
{
    QSqlQuery query(database());
    query.prepare(QStringLiteral("SELECT 1 FROM funds WHERE FundID = ?"));
    query.addBindValue(fundID);
    return query.exec() && query.next();
}

} // namespace QuoteDesk
