#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace QuoteDesk
{

/// A product that quotes are made for.
struct Product {
    int productID = 0;
    int productGroupID = 0;
    QString name;
};

/// The fund catalogue as a database in memory, made from the embedded source files when constructed. The
/// tables are those of catalogue/schema.sql.
class CatalogueDatabase
{
public:
    /// Raises CatalogueError when the database cannot be made.
    CatalogueDatabase();
    ~CatalogueDatabase();
    CatalogueDatabase(const CatalogueDatabase &) = delete;
    CatalogueDatabase &operator=(const CatalogueDatabase &) = delete;

    /// The name of the open Qt SQL connection, for datasets and queries.
    const QString &connectionName() const noexcept { return m_connectionName; }

    /// Puts the funds of a file in the place of the embedded ones; the products stay, and each of them offers
    /// every group. Raises CatalogueError naming the file, and the line where there is one; then nothing has
    /// changed.
    void importFile(const QString &path);

    /// The products in catalogue order.
    QList<Product> products() const;
    bool hasFund(int fundID) const;

private:
    QSqlDatabase database() const;
    void build();

    QString m_connectionName;
};

} // namespace QuoteDesk
