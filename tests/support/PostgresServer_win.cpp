#include "PostgresServer.h"

using namespace Qt::StringLiterals;

// The tests leave out what they would run on a server where none is offered.

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
