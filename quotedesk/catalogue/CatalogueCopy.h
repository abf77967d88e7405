#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace QuoteDesk
{

class Database;

/// The complete catalogue of a database as plain values, which can be passed to another thread.
struct CatalogueCopy {
    struct Table {
        QString name;
        QStringList columns;
        QList<QVariantList> rows;
    };
    QList<Table> tables;
    QString version; ///< Changes with every change of the catalogue; see versionOf().

    /// Reads the catalogue of @p database in one transaction. Throws StoreError.
    static CatalogueCopy of(Database &database);
    /// Replaces the catalogue of @p database by this copy. Throws StoreError, with nothing changed.
    void writeTo(Database &database) const;
    /// Identifies the state of a server's catalogue without reading all of it; blank for a file.
    static QString versionOf(Database &database);
};

} // namespace QuoteDesk
