#include "PostgresServer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int StartLimit = 60000; // milliseconds
constexpr int StopLimit = 30000;
constexpr int PollInterval = 20;
constexpr int LogLines = 20;

// Arguments: the server's folder, the folder of the PostgreSQL programs, the command in front of a program
// that runs as the server's user, and the server's options. The shell's input is a pipe whose other end only
// the test's process holds. When that process ends, even by a crash, the pipe ends; the watcher then stops
// the server, and the shell removes the folder. When the shell itself is killed, the server gets a signal
// (setpriv --pdeathsig).
const char *const keeperScript = R"(
folder=$1 programs=$2 asuser=$3
shift 3
exec 3<&0 </dev/null >"$folder/log" 2>&1
if [ ! -d "$folder/data" ]; then
    $asuser "$programs/initdb" --no-sync -A trust -U zel -E UTF8 --locale=C -D "$folder/data" || exit 1
fi
echo "-- The server starts."
$asuser "$programs/postgres" -D "$folder/data" "$@" 3<&- &
server=$!
( read -r line <&3; kill -QUIT $server; kill -CONT $server ) &
watcher=$!
wait $server
status=$?
if kill $watcher 2>/dev/null; then
    exit $status
fi
exec >/dev/null 2>&1
rm -rf "$folder"
)";

/// The folder of the newest installed version's programs.
QString serverPrograms()
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    QString programs;
    double newest = 0;
    for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = versions.filePath(version + u"/bin"_s);
        if (version.toDouble() > newest && QFileInfo(folder + u"/initdb"_s).isExecutable()) {
            newest = version.toDouble();
            programs = folder;
        }
    }
    return programs;
}

QStringList linesOf(const QString &file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(source.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

PostgresServer::~PostgresServer()
{
    GoOn();
    m_keeper.closeWriteChannel();
    if (m_keeper.state() != QProcess::NotRunning && !m_keeper.waitForFinished(StopLimit)) {
        m_keeper.kill();
        m_keeper.waitForFinished(StopLimit);
    }
}

bool PostgresServer::Offered()
{
    return true;
}

bool PostgresServer::Start(const QStringList &settings)
{
    const QString programs = serverPrograms();
    if (programs.isEmpty())
        return Fail(u"the PostgreSQL server programs are not installed"_s);
    QString asUser = u"setpriv --pdeathsig QUIT"_s;
    // PostgreSQL refuses to run as root. A test that runs as root gives the folder to the user postgres and
    // starts the server as this user.
    if (geteuid() == 0) {
        if (QProcess::execute(u"chown"_s, {u"postgres"_s, m_folder.path()}) != 0)
            return Fail(u"there is no user \"postgres\" to run the server"_s);
        asUser += u" --reuid=postgres --regid=postgres --init-groups"_s;
    }
    QStringList arguments{u"-c"_s, QString::fromLatin1(keeperScript), u"keeper"_s, m_folder.path(), programs,
                          asUser};
    const QStringList own{u"fsync=off"_s, u"listen_addresses="_s,
                          u"unix_socket_directories="_s + m_folder.path()};
    for (const QString &setting : own + settings)
        arguments += {u"-c"_s, setting};
    // A server that was stopped leaves its status file. Its last line must not be taken for the new server's.
    QFile::remove(m_folder.filePath(u"data/postmaster.pid"_s));
    m_keeper.setWorkingDirectory(m_folder.path());
    m_keeper.start(u"sh"_s, arguments);

    const QDeadlineTimer limit(StartLimit);
    // The last line of this file is the server's status.
    const QString status = m_folder.filePath(u"data/postmaster.pid"_s);
    for (QStringList lines; lines.isEmpty() || lines.last().trimmed() != u"ready"; lines = linesOf(status)) {
        if (m_keeper.waitForFinished(PollInterval) || m_keeper.state() == QProcess::NotRunning)
            return Fail(u"the PostgreSQL server does not start"_s);
        if (limit.hasExpired())
            return Fail(u"the PostgreSQL server is not ready after %1 seconds"_s.arg(StartLimit / 1000));
    }
    return true;
}

bool PostgresServer::WaitUntilStopped()
{
    return m_keeper.state() == QProcess::NotRunning || m_keeper.waitForFinished(StopLimit);
}

qint64 PostgresServer::ProcessId() const
{
    if (m_keeper.state() == QProcess::NotRunning)
        return 0;
    return linesOf(m_folder.filePath(u"data/postmaster.pid"_s)).value(0).toLongLong();
}

/// The main process first, then its child processes.
QList<qint64> PostgresServer::Processes() const
{
    QList<qint64> processes;
    const qint64 server = ProcessId();
    if (server == 0)
        return processes;
    processes.append(server);
    const QString list = u"/proc/%1/task/%1/children"_s.arg(server);
    const QStringList lines = linesOf(list);
    for (const QString &child : lines.value(0).split(u' ', Qt::SkipEmptyParts))
        processes.append(child.toLongLong());
    return processes;
}

bool PostgresServer::Pause()
{
    // A stopped main process starts no further processes.
    const qint64 server = ProcessId();
    if (server == 0 || ::kill(static_cast<pid_t>(server), SIGSTOP) != 0)
        return false;
    const QDeadlineTimer limit(StopLimit);
    const auto isStopped = [](qint64 process) {
        const QString state = linesOf(u"/proc/%1/stat"_s.arg(process)).value(0);
        // A process that has ended stays a zombie because the stopped main process does not collect it.
        return state.isEmpty() || u"TZX"_s.contains(state.section(u") "_s, -1).at(0));
    };
    while (!isStopped(server) && !limit.hasExpired())
        usleep(1000);
    for (const qint64 process : Processes()) {
        ::kill(static_cast<pid_t>(process), SIGSTOP);
        while (!isStopped(process) && !limit.hasExpired())
            usleep(1000);
    }
    return !limit.hasExpired();
}

void PostgresServer::GoOn()
{
    const QList<qint64> processes = Processes();
    for (const qint64 process : processes)
        ::kill(static_cast<pid_t>(process), SIGCONT);
}

bool PostgresServer::Fail(const QString &reason)
{
    m_reason = reason;
    const QStringList said = linesOf(m_folder.filePath(u"log"_s));
    if (!said.isEmpty())
        m_reason += u"; its log ends with\n"_s + said.mid(said.size() - LogLines).join(u'\n');
    return false;
}
