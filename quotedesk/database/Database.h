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

/// Identifies a file even when another one takes its name: device and inode number.
using FileIdentity = std::pair<quint64, quint64>;

/// One connection to the tables of quotes and catalogue, in SQLite or PostgreSQL; statements are the same for
/// both. All errors are StoreError with a message for users. After the server was lost, or the file was moved
/// away or replaced, the next statement or transaction connects again.
class Database
{
public:
    enum class Engine { SQLite, PostgreSQL };

    /// Opens the database and creates or upgrades its tables. Throws StoreError. With @p cutter another
    /// thread can end a wait for the server; the waiting call then throws StoreUnreachable.
    explicit Database(const StoreLocation &location, std::shared_ptr<LineCutter> cutter = {});
    /// A database of its own in memory.
    static std::unique_ptr<Database> inMemory();
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    Engine engine() const noexcept { return m_engine; }
    const QString &connectionName() const noexcept { return m_connectionName; }
    const StoreLocation &location() const noexcept { return m_location; }

    /// Runs a statement with a value for each "?". A null QString is stored as an empty text, an invalid
    /// QVariant as NULL.
    QSqlQuery run(const QString &statement, const QVariantList &values = {});
    /// Moves to the next row of run()'s result; returns false after the last row. SQLite reads row by row: an
    /// error in between is thrown as StoreError, because a quote must not be returned with only some of its
    /// funds.
    bool next(QSqlQuery &query) const;
    /// The first column of the first row; an invalid QVariant when there is no row.
    QVariant single(const QString &statement, const QVariantList &values = {});

    /// A new id for a client, quote or running program. Call inside a transaction.
    qint64 newID();
    /// Announces to other programs, when the transaction is committed, that quotes, clients or the catalogue
    /// have changed, and locks out other writers of them. Call inside a transaction, before reading anything
    /// that the change depends on.
    void announceChange();
    /// Whether other programs have announced a change since the last call. Queries a server, so that a lost
    /// connection is noticed.
    bool changedElsewhere();

    /// Whether a transaction is open.
    bool isBusy() const noexcept { return m_busy; }
    /// @p whenIdle is called after a transaction has ended; it may begin another one and must not throw.
    void setWhenIdle(std::function<void()> whenIdle) { m_whenIdle = std::move(whenIdle); }
    /// @p whenConnected is called after a lost connection was established again.
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
    void lookForChanges(const QString &lock = {});
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
    std::optional<FileIdentity> m_file; ///< The open file.
    QString m_connectionName;
    bool m_busy = false;
    bool m_connecting = false;
    qint64 m_seenVersion = -1;    ///< of a file: increases with commits of other connections
    QString m_seenChange;         ///< the key of the last change of quotes, clients or catalogue
    bool m_othersChanged = false; ///< and changedElsewhere() has not been called yet
    std::function<void()> m_whenIdle;
    std::function<void()> m_whenConnected;
};

/// Runs its work completely or, without commit(), not at all.
class Transaction
{
public:
    enum Kind {
        Read, ///< All reading sees the same state.
        Write ///< SQLite locks the file for writing immediately, so that the work cannot fail half way.
    };
    /// Throws StoreError, also when a transaction is already open.
    Transaction(Database &database, Kind kind);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    /// Throws StoreError; the work is then rolled back. After StoreUnreachable it is not known whether it
    /// was.
    void commit();

private:
    Database &m_database;
    bool m_open = true;
};

/// Inserts many rows fast: on a server a hundred rows per statement, because round trips are slow; in SQLite
/// row by row with a prepared statement.
class BulkInsert
{
public:
    BulkInsert(Database &database, const QString &table, const QStringList &columns);
    /// One value per column.
    void add(const QVariantList &row);
    /// Writes the remaining rows; call it once at the end.
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
