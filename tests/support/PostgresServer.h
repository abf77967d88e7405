#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A PostgreSQL server of the test's own, in a temporary folder that goes with it. It is reached through a
/// Unix socket in that folder only, so servers of tests that run side by side do not meet. However the test's
/// process ends, killed or crashed, the server ends with it and its folder goes.
class PostgresServer
{
public:
    PostgresServer() = default;
    ~PostgresServer();
    Q_DISABLE_COPY_MOVE(PostgresServer)

    /// Whether tests can have a server on this system. Where they cannot, they run on SQLite alone.
    static bool Offered();
    /// Makes the cluster and waits until it answers; false, with Reason, when that fails. Each of @p settings
    /// is one of the server's own ("max_connections=20"). A server that has been stopped starts again with
    /// its databases.
    bool Start(const QStringList &settings = {});
    /// Stops all of the server's processes where they are: its lines stay open and nothing answers on them.
    bool Pause();
    /// Lets them go on.
    void GoOn();
    /// Waits for the end of a server that has been told to stop; false when it runs on.
    bool WaitUntilStopped();
    /// Why Start failed: what was tried, and the last lines that the server's programs wrote.
    QString Reason() const { return m_reason; }
    QString Host() const { return m_folder.path(); } ///< The socket's folder, for a connection's host name.
    qint64 ProcessId() const;                        ///< Of the running server; 0 when it does not run.

private:
    bool Fail(const QString &reason);
    QList<qint64> Processes() const;
    QString m_reason;
    QTemporaryDir m_folder;
    QProcess m_keeper; ///< The shell that runs the server and ends it when its input ends.
};
