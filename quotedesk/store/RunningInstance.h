#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace QuoteDesk
{

class Database;

/// The mark in the database that this program is running: a draft carries the number of the program that it
/// is typed in. The mark goes with the program however it ends: beside a file it is a
/// locked file, on a server a lock of the session.
class RunningInstance
{
public:
    /// Takes a new number. Raises StoreError.
    explicit RunningInstance(Database &database);

    qint64 id() const noexcept { return m_id; }
    /// Whether the program of that number, perhaps this one, is still running.
    bool isRunning(qint64 id) const;
    /// Sets the mark again after the server's session, or the file, was lost and is back. Raises StoreError.
    void renew();

    /// The login name of whoever runs the program.
    static QString person();

private:
    void clearMarks() const;
    QString markPath(qint64 id) const;

    Database &m_database;
    qint64 m_id = 0;
    std::unique_ptr<QLockFile> m_mark;
};

} // namespace QuoteDesk
