#pragma once

#include "catalogue/CatalogueImport.h"

#include <QList>
#include <QString>

#include <memory>

namespace QuoteDesk
{

struct CatalogueCopy;
class Database;

/// A product that quotes are made for.
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
    /// The embedded catalogue in a database of its own in memory. Raises StoreError.
    CatalogueDatabase();
    /// The catalogue beside the quotes of a store, which must outlive this object.
    explicit CatalogueDatabase(Database &database);
    /// A copy in memory, which is read without waiting for anybody.
    explicit CatalogueDatabase(const CatalogueCopy &copy);
    ~CatalogueDatabase();
    CatalogueDatabase(const CatalogueDatabase &) = delete;
    CatalogueDatabase &operator=(const CatalogueDatabase &) = delete;

    /// Puts the embedded catalogue into a database that has no products.
    static void fillWhenEmpty(Database &database);

    Database &database() const noexcept { return *m_database; }
    /// Brings a copy up to date. Raises StoreError.
    void take(const CatalogueCopy &copy);
    /// Which state of a server's catalogue a copy shows: CatalogueCopy::version.
    const QString &version() const noexcept { return m_version; }
    /// The name of the open Qt SQL connection, for datasets and queries.
    const QString &connectionName() const noexcept;

    /// Puts the funds of a file in the place of those that are there; the products stay, and each of them
    /// offers every group. @p consent is asked first when that takes something away; false, with nothing
    /// changed, when it says no. Raises CatalogueError naming the file, and the first line that is wrong;
    /// then nothing has changed.
    bool importWhole(const QString &path, const ImportConsent &consent);
    /// The same without asking.
    void importFile(const QString &path);
    /// The same for a person who can look at a report: lines that are wrong are left out and named in it.
    /// Raises CatalogueError for a file that is no catalogue or holds no good line, StoreError for a database
    /// that refuses; nothing has changed then, nor when the progress or the consent cancelled the import.
    ImportReport importFile(const QString &path, const ImportProgress &progress,
                            const ImportConsent &consent = {});

    /// In Afrikaans the providers and products() give the Afrikaans names for the names, where there are any.
    void setAfrikaans(bool afrikaans) noexcept { m_afrikaans = afrikaans; }
    bool isAfrikaans() const noexcept { return m_afrikaans; }

    /// The products in catalogue order.
    QList<Product> products() const;
    bool hasFund(int fundID) const;

private:
    bool mayReplace(const CatalogueImport &import, const ImportConsent &consent) const;

    std::unique_ptr<Database> m_own;
    Database *m_database;
    QString m_version;
    bool m_afrikaans = false;
};

} // namespace QuoteDesk
