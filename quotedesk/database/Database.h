#pragma once

#include "database/LineCutter.h"
#include "database/StoreLocation.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace QuoteDesk
{

/// What tells a file from another that takes its name: the device and the number there.
using FileIdentity = std::pair<quint64, quint64>;

/// One connection to the tables of quotes and catalogue, on SQLite or PostgreSQL. Statements are written once
/// for both. All errors are StoreError in plain words; a lost server, or a file that was taken away or
/// replaced, is connected anew by the next statement or transaction once it is there.
class Database
{
public:
    enum class Engine { SQLite, PostgreSQL };

    /// Opens it and makes the tables or brings them up to date. Raises StoreError. With @p cutter another
    /// thread can end a wait for a server; what was waiting raises StoreUnreachable then.
    explicit Database(const StoreLocation &location, std::shared_ptr<LineCutter> cutter = {});
    /// A database of this object's own in memory.
    static std::unique_ptr<Database> inMemory();
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    Engine engine() const noexcept { return m_engine; }
    const QString &connectionName() const noexcept { return m_connectionName; }
    const StoreLocation &location() const noexcept { return m_location; }

    /// Runs one statement with a value for each "?" in it. A null text is stored as a blank one; an invalid
    /// variant is NULL.
    QSqlQuery run(const QString &statement, const QVariantList &values = {});
    /// Goes to the next row of what run() gave; false behind the last one. The rows of a file are read one by
    /// one: raises StoreError when they end before their end, which a quote with some of its funds would not
    /// tell.
    bool next(QSqlQuery &query) const;
    /// The first column of the first row; an invalid variant without a row.
    QVariant single(const QString &statement, const QVariantList &values = {});

    /// A number that no client, quote or running program of this database has had. Inside a transaction.
    qint64 newID();
    /// Lets others see, once the transaction is committed, that quotes, clients or the catalogue have
    /// changed; also makes the writers of these wait for one another. Inside a transaction, before anything
    /// is read that the change depends on.
    void announceChange();
    /// Whether others have announced a change since the last call. Asks a server, so that one that has gone
    /// is noticed.
    bool changedElsewhere();

    /// Whether a transaction is open.
    bool isBusy() const noexcept { return m_busy; }
    /// Called when a transaction has ended; it may begin another one. It must not raise.
    void setWhenIdle(std::function<void()> whenIdle) { m_whenIdle = std::move(whenIdle); }
    /// Called when a lost connection has been made anew.
    void setWhenConnected(std::function<void()> whenConnected) { m_whenConnected = std::move(whenConnected); }

private:
    friend class Transaction;
    friend class BulkInsert;
    struct InMemory {
    };
    explicit Database(InMemory);

    void open();
    void connect();
    void connectIfLost();
    bool isFile() const;
    bool isLost() const;
    void configure(QSqlDatabase &fresh) const;
    void setUpSession(QSqlDatabase &database);
    void listen();
    void lookForChanges();
    bool isCut() const { return m_cutter && m_cutter->isCut(); }
    void close();
    bool execute(QSqlQuery &query, const QString &statement, const QVariantList &values) const;
    void begin(const QString &statement);
    void commit();
    void rollback() noexcept;
    void ended() noexcept;
    [[noreturn]] void raise(const QSqlError &error) const;
    [[noreturn]] void raiseUnreachable(const QString &details) const;
    [[noreturn]] void raise(const QString &reason, const QString &details = {}) const;
    QSqlDatabase connection() const { return QSqlDatabase::database(m_connectionName, false); }

    StoreLocation m_location;
    std::shared_ptr<LineCutter> m_cutter;
    Engine m_engine = Engine::SQLite;
    std::optional<FileIdentity> m_file; ///< The file that is open.
    QString m_connectionName;
    bool m_busy = false;
    bool m_connecting = false;
    qint64 m_seenVersion = -1;    ///< Of a file: grows with what other connections commit.
    QString m_seenChange;         ///< Of a file: the key of the last change of quotes, clients or catalogue.
    bool m_othersChanged = false; ///< And nobody has asked yet.
    std::function<void()> m_whenIdle;
    std::function<void()> m_whenConnected;
};

/// Runs a block of work whole or, when the commit was not reached, not at all.
class Transaction
{
public:
    enum Kind {
        Read, ///< All reading sees one moment.
        Write ///< On SQLite the file is taken for writing at once, so that the work cannot fail half way.
    };
    /// Raises StoreError; also when one is open already.
    Transaction(Database &database, Kind kind);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    /// Raises StoreError; the work is then undone. After StoreUnreachable it is not known whether it is.
    void commit();

private:
    Database &m_database;
    bool m_open = true;
};

/// Inserts many rows the quickest way of the engine: a hundred with one statement on a server, where the way
/// there and back is what takes long, and row by row with a statement that stays compiled in a file.
class BulkInsert
{
public:
    BulkInsert(Database &database, const QString &table, const QStringList &columns);
    /// One value for each column.
    void add(const QVariantList &row);
    /// Writes what is left; called once at the end.
    void finish();

private:
    void flush();

    Database &m_database;
    QString m_head;
    QString m_marks;
    QSqlQuery m_compiled;  ///< SQLite
    QVariantList m_values; ///< PostgreSQL
    int m_rows = 0;
};

} // namespace QuoteDesk
