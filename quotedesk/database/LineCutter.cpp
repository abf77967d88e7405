#include "database/LineCutter.h"

#include <QLibrary>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The socket of a PostgreSQL connection; -1 when the driver does not give it. The driver has already loaded
/// the client library, so its function is looked up at run time instead of linking the library.
int socketOf(const QSqlDatabase &connection)
{
    const QVariant handle = connection.driver()->handle();
    // One type with two names: the library's and the compiler's.
    if (qstrcmp(handle.typeName(), "PGconn*") != 0 && qstrcmp(handle.typeName(), "pg_conn*") != 0)
        return -1;
    using SocketOf = int (*)(const void *);
#ifdef Q_OS_WIN
    static const auto socket = reinterpret_cast<SocketOf>(QLibrary::resolve(u"libpq"_s, "PQsocket"));
#else
    static const auto socket = reinterpret_cast<SocketOf>(QLibrary::resolve(u"pq"_s, 5, "PQsocket"));
#endif
    const void *const session = *static_cast<void *const *>(handle.constData());
    return socket && session ? socket(session) : -1;
}

} // namespace

LineCutter::~LineCutter()
{
    release();
}

void LineCutter::hold(const QSqlDatabase &connection)
{
    release();
    const std::lock_guard lock(m_mutex);
    const int socket = socketOf(connection);
    if (socket < 0)
        return;
#ifdef Q_OS_WIN
    m_line = socket;
#else
    m_line = fcntl(socket, F_DUPFD_CLOEXEC, 0);
#endif
    if (m_isCut)
        cutNow();
}

void LineCutter::release()
{
    const std::lock_guard lock(m_mutex);
#ifndef Q_OS_WIN
    // The driver has closed its handle. While the duplicate is open, the server would consider the session
    // alive.
    if (m_line >= 0)
        close(static_cast<int>(m_line));
#endif
    m_line = -1;
}

quint64 LineCutter::begin()
{
    const std::lock_guard lock(m_mutex);
    m_isCut = m_isCutForGood;
    return ++m_number;
}

bool LineCutter::isCut() const
{
    const std::lock_guard lock(m_mutex);
    return m_isCut;
}

void LineCutter::cut(quint64 number)
{
    const std::lock_guard lock(m_mutex);
    if (number != m_number || m_isCut)
        return;
    m_isCut = true;
    cutNow();
}

void LineCutter::cutForGood()
{
    const std::lock_guard lock(m_mutex);
    m_isCut = true;
    m_isCutForGood = true;
    cutNow();
}

void LineCutter::cutNow()
{
    if (m_line < 0)
        return;
#ifdef Q_OS_WIN
    shutdown(static_cast<SOCKET>(m_line), SD_BOTH);
#else
    shutdown(static_cast<int>(m_line), SHUT_RDWR);
#endif
}

} // namespace QuoteDesk
