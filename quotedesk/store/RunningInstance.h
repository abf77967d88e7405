#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace QuoteDesk
{

class Database;

/// Marks this program as running in the database; a draft belongs to the id of the program that stores it.
/// The mark ends with the process, however that ends: for a file it is a lock file beside it, on a server an
/// advisory lock of the session.
class RunningInstance
{
public:
    /// Takes a new id. Throws StoreError.
    explicit RunningInstance(Database &database);

    qint64 id() const noexcept { return m_id; }
    /// Whether the program with this id, perhaps this one, is still running.
    bool isRunning(qint64 id) const;
    /// Sets the mark again after the server's session or the file was lost and is available again. Throws
    /// StoreError.
    void renew();

    /// The login name of the program's user.
    static QString person();

private:
    void clearMarks() const;
    QString markPath(qint64 id) const;

    Database &m_database;
    qint64 m_id = 0;
    std::unique_ptr<QLockFile> m_mark;
};

} // namespace QuoteDesk
