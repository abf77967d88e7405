#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A PostgreSQL server of the test's own in a temporary folder. It listens on a Unix socket in that folder
/// only, so the servers of parallel tests do not collide. The server and its folder go with the test's
/// process, even after a crash.
class PostgresServer
{
public:
    PostgresServer() = default;
    ~PostgresServer();
    Q_DISABLE_COPY_MOVE(PostgresServer)

    /// Whether tests can run a server on this system. Where they cannot, they use SQLite only.
    static bool Offered();
    /// Creates the cluster, starts the server and waits until it is ready. Returns false when that fails;
    /// Reason says why. @p settings are options of the server ("max_connections=20"). A stopped server starts
    /// again with its databases.
    bool Start(const QStringList &settings = {});
    /// Stops all processes of the server with SIGSTOP: connections stay open and get no answer.
    bool Pause();
    /// Continues the processes after Pause.
    void GoOn();
    /// Waits until a server that was asked to stop has ended. Returns false when it still runs.
    bool WaitUntilStopped();
    /// Why Start failed: the failed step and the last lines of the server's log.
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
