#include "PostgresServer.h"

using namespace Qt::StringLiterals;

// No PostgreSQL server is offered on Windows; the tests leave out what needs one.

PostgresServer::~PostgresServer() = default;

bool PostgresServer::Offered()
{
    return false;
}

bool PostgresServer::Start(const QStringList &)
{
    return Fail(u"there are no PostgreSQL server programs for this system"_s);
}

bool PostgresServer::Pause()
{
    return false;
}

void PostgresServer::GoOn() {}

bool PostgresServer::WaitUntilStopped()
{
    return true;
}

qint64 PostgresServer::ProcessId() const
{
    return 0;
}

bool PostgresServer::Fail(const QString &reason)
{
    m_reason = reason;
    return false;
}
