#pragma once

#include <QString>
#include <QTemporaryDir>

/// A PostgreSQL server of the test's own, in a temporary folder that goes with it. It is reached through a
/// Unix socket in that folder only, so servers of tests that run side by side do not meet.
class PostgresServer
{
public:
    PostgresServer() = default;
    ~PostgresServer();
    Q_DISABLE_COPY_MOVE(PostgresServer)

    /// Makes the cluster and waits until it answers; false, with Reason, when that fails.
    bool Start();
    QString Reason() const { return m_reason; }
    QString Host() const { return m_folder.path(); } ///< The socket's folder, for a connection's host name.

private:
    bool Run(const QString &program, const QStringList &arguments);
    QString m_programs;
    QString m_reason;
    QTemporaryDir m_folder;
    bool m_started = false;
};
