#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace QuoteDesk
{

class Database;

/// A database's whole catalogue as plain values, which one thread may hand to another.
struct CatalogueCopy {
    struct Table {
        QString name;
        QStringList columns;
        QList<QVariantList> rows;
    };
    QList<Table> tables;
    QString version; ///< Another one after every change; see versionOf().

    /// Reads what stands in @p database at one moment. Raises StoreError.
    static CatalogueCopy of(Database &database);
    /// Puts it into the place of what stands in @p database. Raises StoreError; nothing has changed then.
    void writeTo(Database &database) const;
    /// Tells one state of a server's catalogue from another without reading it; blank for a file.
    static QString versionOf(Database &database);
};

} // namespace QuoteDesk
