#pragma once

#include "PostgresServer.h"

#include "database/Database.h"
#include "store/QuoteStore.h"

#include <QFile>
#include <QSqlError>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

/// Functions that the tests of the store share.
namespace StoreTesting
{

using namespace QuoteDesk;

inline Currency money(const char *text)
{
    return Currency::fromText(QString::fromLatin1(text));
}

/// The message of the StoreError that @p body throws; empty when it throws nothing.
template <class Body> QString storeErrorOf(Body &&body)
{
    try {
        body();
        return {};
    } catch (const StoreError &error) {
        return error.message();
    }
}

/// A quote whose fields all follow from one number, so that a mixture of two such quotes can be detected.
inline Quote numberedQuote(int number, int funds)
{
    Quote quote;
    quote.productID = 1;
    quote.description = QStringLiteral("Number %1").arg(number);
    quote.byAmount = number % 2 == 1;
    quote.details = {{QStringLiteral("number"), QString::number(number)},
                     {QStringLiteral("term"), QString::number(number % 40)}};
    for (int fund = 1; fund <= funds; ++fund) {
        quote.funds.append({fund, QStringLiteral("Fund %1 of %2").arg(fund).arg(number),
                            Currency::fromRaw(number * 100LL + fund), Currency::fromRaw(number)});
        quote.amount += quote.funds.constLast().amount;
    }
    return quote;
}

/// The number of such a quote; -1 when its fields do not belong together.
inline int numberOf(const Quote &quote)
{
    const int number = quote.details.value(QStringLiteral("number")).toInt();
    const Quote whole = numberedQuote(number, static_cast<int>(quote.funds.size()));
    return !quote.funds.isEmpty() && quote.description == whole.description &&
                   quote.details == whole.details && quote.funds == whole.funds &&
                   quote.amount == whole.amount && quote.byAmount == whole.byAmount
               ? number
               : -1;
}

/// A connection of the test's own that does not use the store.
class RawConnection
{
public:
    explicit RawConnection(const StoreLocation &location)
        : RawConnection(location, location.server.path().mid(1))
    {
    }
    RawConnection(const StoreLocation &location, const QString &database)
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(
            location.isServer() ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"), m_name);
        if (location.isServer()) {
            connection.setHostName(location.server.query().mid(5));
            connection.setUserName(location.server.userName());
            connection.setDatabaseName(database);
        } else {
            connection.setDatabaseName(location.file);
        }
        if (!connection.open())
            qFatal("The test's own connection cannot be opened: %s",
                   qPrintable(connection.lastError().text()));
        if (location.isServer())
            run(QStringLiteral("SET search_path TO quotedesk"));
    }
    ~RawConnection() { QSqlDatabase::removeDatabase(m_name); }
    Q_DISABLE_COPY_MOVE(RawConnection)

    QVariant run(const QString &statement) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name));
        if (!query.exec(statement))
            qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
        return query.next() ? query.value(0) : QVariant();
    }

private:
    const QString m_name = QStringLiteral("raw-") + QUuid::createUuid().toString(QUuid::Id128);
};

/// The location of a new, empty database: a file that does not exist yet, or a database on the server.
inline StoreLocation newDatabase(const PostgresServer *server, const QTemporaryDir &folder,
                                 const QString &name)
{
    if (!server)
        return StoreLocation::fromText(folder.filePath(name + QStringLiteral(".db")));
    const auto location =
        StoreLocation::fromText(QStringLiteral("postgresql://zel@/%1?host=%2").arg(name, server->Host()));
    RawConnection(location, QStringLiteral("postgres")).run(QStringLiteral("CREATE DATABASE ") + name);
    return location;
}

} // namespace StoreTesting
