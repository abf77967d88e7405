#pragma once

#include "catalogue/CatalogueImport.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

namespace QuoteDesk
{

struct CatalogueCopy;
class Database;

/// A product that quotes can be made for.
struct Product {
    int productID = 0;
    int productGroupID = 0;
    QString name;
    QString nameAfrikaans;
};

/// The fund catalogue of a database: products, group types, fund groups, funds and fund messages.
class CatalogueDatabase
{
public:
    /// The embedded catalogue in its own database in memory. Throws StoreError.
    CatalogueDatabase();
    /// The catalogue in the database of the quotes; @p database must outlive this object.
    explicit CatalogueDatabase(Database &database);
    /// A copy in memory, which can be read without waiting for a server.
    explicit CatalogueDatabase(const CatalogueCopy &copy);
    ~CatalogueDatabase();
    CatalogueDatabase(const CatalogueDatabase &) = delete;
    CatalogueDatabase &operator=(const CatalogueDatabase &) = delete;

    /// Writes the embedded catalogue into a database without products.
    static void fillWhenEmpty(Database &database);

    Database &database() const noexcept { return *m_database; }
    /// Replaces the content of a copy. Throws StoreError.
    void take(const CatalogueCopy &copy);
    /// The state of the server's catalogue that a copy has: CatalogueCopy::version.
    const QString &version() const noexcept { return m_version; }
    /// The name of the open Qt SQL connection, for datasets and queries.
    const QString &connectionName() const noexcept;

    /// Replaces the funds by those of a file. The products stay, and each of them offers every group. When
    /// funds are removed or renamed, @p consent is asked first; returns false, with nothing changed, when it
    /// refuses. Throws CatalogueError with the file and its first bad line; nothing has changed then.
    bool importWhole(const QString &path, const ImportConsent &consent);
    /// The same without asking.
    void importFile(const QString &path);
    /// The same for a user who can read a report: bad lines are skipped and listed in the report. Throws
    /// CatalogueError for a file that is no catalogue or has no valid line, and StoreError for an error of
    /// the database. Nothing has changed then, nor when progress or consent cancelled the import.
    ImportReport importFile(const QString &path, const ImportProgress &progress,
                            const ImportConsent &consent = {});

    /// Whether the providers and products() give the Afrikaans names where there are any.
    void setAfrikaans(bool afrikaans) noexcept { m_afrikaans = afrikaans; }
    bool isAfrikaans() const noexcept { return m_afrikaans; }

    /// The products in catalogue order.
    QList<Product> products() const;
    bool hasFund(int fundID) const;
    int fundCount() const;
    /// The time of the last import, in UTC; invalid for the embedded catalogue. A copy does not have it.
    QDateTime imported() const;
    /// The name of a fund in the current language, when a quote has it under one of its present names or
    /// none; otherwise @p quotedName, because a quote keeps the names under which its funds were quoted.
    QString shownFundName(int fundID, const QString &quotedName) const;
    /// Whether the funds are the invented ones of the embedded catalogue.
    bool hasSampleFunds() const;

private:
    bool mayReplace(const CatalogueImport &import, const ImportConsent &consent) const;

    std::unique_ptr<Database> m_own;
    Database *m_database;
    QString m_version;
    bool m_afrikaans = false;
};

} // namespace QuoteDesk
