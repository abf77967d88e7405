#include "PostgresServer.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <unistd.h>

PostgresServer::~PostgresServer()
{
    if (m_started)
        Run(QStringLiteral("pg_ctl"),
            {QStringLiteral("stop"), QStringLiteral("-m"), QStringLiteral("immediate"), QStringLiteral("-w"),
             QStringLiteral("-D"), m_folder.filePath(QStringLiteral("data"))});
}

bool PostgresServer::Start()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString programs = versions.filePath(version + QStringLiteral("/bin"));
        if (QFileInfo(programs + QStringLiteral("/initdb")).isExecutable())
            m_programs = programs;
    }
    if (m_programs.isEmpty()) {
        m_reason = QStringLiteral("the PostgreSQL server programs are not installed");
        return false;
    }
    // The server refuses to run as root, so then the folder and the programs are the postgres user's.
    if (geteuid() == 0 &&
        QProcess::execute(QStringLiteral("chown"), {QStringLiteral("postgres"), m_folder.path()}) != 0) {
        m_reason = QStringLiteral("there is no user \"postgres\" to run the server");
        return false;
    }
    const QString data = m_folder.filePath(QStringLiteral("data"));
    if (!Run(QStringLiteral("initdb"),
             {QStringLiteral("--no-sync"), QStringLiteral("-A"), QStringLiteral("trust"),
              QStringLiteral("-U"), QStringLiteral("zel"), QStringLiteral("-E"), QStringLiteral("UTF8"),
              QStringLiteral("--locale=C"), QStringLiteral("-D"), data}))
        return false;
    // Set before it is tried: a start that only took too long must be stopped as well.
    m_started = true;
    return Run(QStringLiteral("pg_ctl"),
               {QStringLiteral("start"), QStringLiteral("-w"), QStringLiteral("-D"), data,
                QStringLiteral("-l"), m_folder.filePath(QStringLiteral("log")), QStringLiteral("-o"),
                QStringLiteral("-c fsync=off -c listen_addresses='' -c unix_socket_directories='%1'")
                    .arg(m_folder.path())});
}

bool PostgresServer::Run(const QString &program, const QStringList &arguments)
{
    QString file = m_programs + u'/' + program;
    QStringList all = arguments;
    if (geteuid() == 0) {
        all = QStringList{QStringLiteral("--reuid=postgres"), QStringLiteral("--regid=postgres"),
                          QStringLiteral("--init-groups"), file} +
              arguments;
        file = QStringLiteral("setpriv");
    }
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    // The server keeps its parent's output open, which would never end if it were a pipe.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(file, all);
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit &&
        process.exitCode() == 0)
        return true;
    m_reason = QStringLiteral("%1 failed").arg(program);
    return false;
}
