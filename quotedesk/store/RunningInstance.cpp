#include "store/RunningInstance.h"

#include "database/Database.h"
#include "database/StoreError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(RunningInstance)
};

/// Distinguishes this program's advisory locks from those of others.
constexpr int LockClass = 1'902'672;

} // namespace

RunningInstance::RunningInstance(Database &database) : m_database(database)
{
    {
        Transaction transaction(database, Transaction::Write);
        m_id = database.newID();
        transaction.commit();
    }
    if (database.engine() == Database::Engine::PostgreSQL) {
        renew();
        return;
    }
    clearMarks();
    m_mark = std::make_unique<QLockFile>(markPath(m_id));
    // The lock never becomes stale by age; only the end of the process ends it.
    m_mark->setStaleLockTime(0);
    if (!m_mark->tryLock(0))
        throw StoreError(
            Text::tr(
                "The folder %1 cannot be written to. Allow that, or choose another place for the database.")
                .arg(QDir::toNativeSeparators(QFileInfo(markPath(m_id)).absolutePath())));
    QFile::setPermissions(markPath(m_id), QFile::ReadOwner | QFile::WriteOwner);
}

void RunningInstance::renew()
{
    if (m_database.engine() == Database::Engine::PostgreSQL) {
        const QVariantList mark{LockClass, static_cast<int>(m_id)};
        // The former session may not have noticed that its connection is broken. It holds the lock until it
        // has ended; so all of its work is committed or rolled back before this session does anything.
        m_database.run(u"SELECT pg_terminate_backend(pid) FROM pg_locks WHERE locktype ="
                       " 'advisory' AND granted AND classid = ? AND objid = ? AND pid <>"
                       " pg_backend_pid() AND database ="
                       " (SELECT oid FROM pg_database WHERE datname = current_database())"_s,
                       mark);
        m_database.run(u"SELECT pg_advisory_lock(?, ?)"_s, mark);
    } else { // An older copy of the file may not have this id.
        m_database.run(u"UPDATE store_state SET LastID = ? WHERE LastID < ?"_s, {m_id, m_id});
    }
}

bool RunningInstance::isRunning(qint64 id) const
{
    if (id == m_id)
        return true;
    if (m_database.engine() == Database::Engine::PostgreSQL)
        return m_database
                   .single(u"SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND granted"
                           " AND classid = ? AND objid = ? AND database ="
                           " (SELECT oid FROM pg_database WHERE datname = current_database())"_s,
                           {LockClass, static_cast<int>(id)})
                   .toInt() > 0;
    const QString path = markPath(id);
    if (!QFileInfo::exists(path))
        return false;
    // The lock file of a killed program can be locked; locking it removes it.
    QLockFile mark(path);
    mark.setStaleLockTime(0);
    return !mark.tryLock(0);
}

/// Removes the lock files of killed programs.
void RunningInstance::clearMarks() const
{
    const QFileInfo file(m_database.location().file);
    const QString start = file.fileName() + u".running-"_s;
    for (const QString &name : file.absoluteDir().entryList({start + u'*'}, QDir::Files))
        isRunning(name.mid(start.size()).toLongLong());
}

QString RunningInstance::markPath(qint64 id) const
{
    return u"%1.running-%2"_s.arg(m_database.location().file).arg(id);
}

QString RunningInstance::person()
{
    for (const char *name : {"USER", "LOGNAME", "USERNAME"}) {
        if (QString value = qEnvironmentVariable(name); !value.isEmpty())
            return value;
    }
#ifdef Q_OS_UNIX
    if (const passwd *const entry = getpwuid(geteuid()))
        return QString::fromLocal8Bit(entry->pw_name);
#endif
    return Text::tr("unknown");
}

} // namespace QuoteDesk
