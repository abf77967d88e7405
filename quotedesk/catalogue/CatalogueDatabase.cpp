#include "catalogue/CatalogueDatabase.h"

#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueError.h"
#include "database/Database.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueDatabase)
};

[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw CatalogueError(u"%1: %2"_s.arg(QDir::toNativeSeparators(path), reason));
}

/// For a text without any valid line: reports its first bad line.
[[noreturn]] void refuseFirst(const ImportReport &report)
{
    if (report.refused.isEmpty())
        throw CatalogueError(Text::tr("line 2: the catalogue holds no fund"));
    const ImportReport::Refused &first = report.refused.constFirst();
    throw CatalogueError(Text::tr("line %1: %2").arg(first.line).arg(first.reason));
}

} // namespace

CatalogueDatabase::CatalogueDatabase() : m_own(Database::inMemory()), m_database(m_own.get())
{
    fillWhenEmpty(*m_database);
}

CatalogueDatabase::CatalogueDatabase(Database &database) : m_database(&database) {}

CatalogueDatabase::CatalogueDatabase(const CatalogueCopy &copy)
    : m_own(Database::inMemory()), m_database(m_own.get())
{
    take(copy);
}

CatalogueDatabase::~CatalogueDatabase() = default;

void CatalogueDatabase::take(const CatalogueCopy &copy)
{
    copy.writeTo(*m_database);
    m_version = copy.version;
}

void CatalogueDatabase::fillWhenEmpty(Database &database)
{
    const auto isFilled = [&database] {
        return database.single(u"SELECT count(*) FROM products"_s).toInt() > 0;
    };
    if (isFilled())
        return;
    Transaction transaction(database, Transaction::Write);
    database.announceChange();
    // Another program may have filled it while this one waited for the lock.
    if (!isFilled())
        loadEmbeddedCatalogue(database);
    transaction.commit();
}

const QString &CatalogueDatabase::connectionName() const noexcept
{
    return m_database->connectionName();
}

bool CatalogueDatabase::importWhole(const QString &path, const ImportConsent &consent)
{
    try {
        CatalogueImport import(readCatalogueFile(path, BadText::Refuse));
        import.read({});
        if (import.report().linesRead == 0 || !import.report().refused.isEmpty())
            refuseFirst(import.report());
        if (!mayReplace(import, consent))
            return false;
        return import.write(*m_database, {});
    } catch (const CatalogueError &error) {
        refuse(path, error.message());
    }
}

void CatalogueDatabase::importFile(const QString &path)
{
    importWhole(path, {});
}

ImportReport CatalogueDatabase::importFile(const QString &path, const ImportProgress &progress,
                                           const ImportConsent &consent)
{
    try {
        CatalogueImport import(readCatalogueFile(path, BadText::Mark));
        if (!import.read(progress))
            return import.report();
        if (import.holdsFunds() && !mayReplace(import, consent)) {
            ImportReport declined = import.report();
            declined.cancelled = true;
            return declined;
        }
        if (import.write(*m_database, progress) && import.report().imported == 0)
            refuseFirst(import.report());
        return import.report();
    } catch (const CatalogueError &error) {
        refuse(path, error.message());
    }
}

/// Asks only when funds are removed or renamed.
bool CatalogueDatabase::mayReplace(const CatalogueImport &import, const ImportConsent &consent) const
{
    if (!consent)
        return true;
    const ImportLoss loss = import.loss(*m_database);
    return !loss.any() || consent(loss);
}

QList<Product> CatalogueDatabase::products() const
{
    QList<Product> result;
    QSqlQuery query = m_database->run(
        u"SELECT ProductID, ProductGroupID, ProductName, ProductName_AFR FROM products ORDER BY RowNo"_s);
    while (m_database->next(query)) {
        Product product{query.value(0).toInt(), query.value(1).toInt(), query.value(2).toString(),
                        query.value(3).toString()};
        if (m_afrikaans && !product.nameAfrikaans.isEmpty())
            product.name = product.nameAfrikaans;
        result.append(product);
    }
    return result;
}

bool CatalogueDatabase::hasFund(int fundID) const
{
    return m_database->single(u"SELECT 1 FROM funds WHERE FundID = ?"_s, {fundID}).isValid();
}

int CatalogueDatabase::fundCount() const
{
    return m_database->single(u"SELECT count(*) FROM funds"_s).toInt();
}

QDateTime CatalogueDatabase::imported() const
{
    return QDateTime::fromString(m_database->single(u"SELECT CatalogueDate FROM store_state"_s).toString(),
                                 Qt::ISODate);
}

QString CatalogueDatabase::shownFundName(int fundID, const QString &quotedName) const
{
    QSqlQuery query =
        m_database->run(u"SELECT FundName, FundName_AFR FROM funds WHERE FundID = ?"_s, {fundID});
    while (m_database->next(query)) {
        const QString english = query.value(0).toString();
        const QString afrikaans = query.value(1).toString();
        if (quotedName.isEmpty() || quotedName == english || quotedName == afrikaans)
            return m_afrikaans && !afrikaans.isEmpty() ? afrikaans : english;
    }
    return quotedName;
}

bool CatalogueDatabase::hasSampleFunds() const
{
    const auto fundsOf = [](Database &database) {
        QList<QPair<int, QString>> funds;
        QSqlQuery query = database.run(u"SELECT FundID, FundName FROM funds ORDER BY FundID, FundGroupID"_s);
        while (database.next(query))
            funds.append({query.value(0).toInt(), query.value(1).toString()});
        return funds;
    };
    const CatalogueDatabase embedded;
    return fundsOf(*m_database) == fundsOf(embedded.database());
}

} // namespace QuoteDesk
