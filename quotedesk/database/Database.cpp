#include "database/Database.h"

#include "database/DatabaseFile.h"
#include "database/Schema.h"
#include "database/StoreError.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QUrlQuery>
#include <QUuid>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Database)
};

/// How long another program's write may take before ours is given up, in milliseconds.
constexpr int Patience = 10'000;

/// How long a server may work on one statement before it gives up by itself, in milliseconds: what nobody
/// waits for any more must not hold its locks for ever.
constexpr int LongestStatement = 60'000;

/// The limits of a connection to a server: it is there within five seconds or not at all, and a line that has
/// gone dead is noticed within half a minute. They say nothing of a server that is there and silent; whoever
/// cannot wait for that has a LineCutter.
QString lineLimits()
{
    return u"connect_timeout=5;keepalives=1;keepalives_idle=10;keepalives_interval=5;"
           "keepalives_count=3;tcp_user_timeout=15000"_s;
}

/// What an error of the SQLite library means to a person; blank when it has no words of its own.
QString sqliteReason(int code)
{
    // The upper bits tell variants of the same error apart.
    switch (code & 0xff) {
    case 5:
    case 6:
        return Text::tr("Another program is writing to it; try again in a moment.");
    case 3:
    case 8:
    case 14:
        return Text::tr("It cannot be written; the file or its folder is read-only.");
    case 10:
        return Text::tr("The disk cannot be read or written.");
    case 11:
        return Text::tr("The file is damaged.");
    case 13:
        return Text::tr("The disk is full.");
    case 26:
        return Text::tr("The file is no database.");
    default:
        return {};
    }
}

/// The same for the five-character state of PostgreSQL.
QString postgresReason(const QString &state)
{
    if (state == u"53100"_s)
        return Text::tr("The server's disk is full.");
    if (state == u"55P03"_s || state.startsWith(u"40"_s))
        return Text::tr("Another program is writing to it; try again in a moment.");
    if (state == u"57014"_s)
        return Text::tr("The server has taken too long; try again in a moment.");
    if (state == u"25006"_s)
        return Text::tr("The server allows reading only.");
    if (state == u"42501"_s)
        return Text::tr("The server's user is not allowed to do that.");
    return {};
}

/// The server ends the session, or has ended it. A state is the server's to give: without one the client
/// library could not speak to it, even where it takes the line for open still.
bool meansLost(const QString &state)
{
    return state.isEmpty() || state.startsWith(u"08"_s) || state.startsWith(u"57P0"_s);
}

/// Nothing when there is no file.
std::optional<FileIdentity> identityOf(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat file = {};
    if (stat(QFile::encodeName(path).constData(), &file) == 0)
        return FileIdentity(file.st_dev, file.st_ino);
#else // a file that is open cannot be taken away
    if (QFileInfo::exists(path))
        return FileIdentity();
#endif
    return std::nullopt;
}

/// The value as it is given to the driver. The drivers store a null text as NULL, which a blank one is not. A
/// zero character ends a text for a server and its own library speaks of bytes then; a file would take it,
/// and an office could not.
QVariant storable(const QVariant &value)
{
    constexpr qsizetype Enough = 60;
    if (value.metaType() != QMetaType::fromType<QString>())
        return value;
    const QString text = value.toString();
    if (text.isNull())
        return QVariant(u""_s);
    if (text.contains(QChar(u'\0')))
        throw StoreError(
            Text::tr("The text \"%1\" has a character in it that no database can keep (number 0). "
                     "Type that text anew.")
                .arg(QString(text).remove(QChar(u'\0')).left(Enough)));
    return value;
}

} // namespace

Database::Database(const StoreLocation &location, std::shared_ptr<LineCutter> cutter)
    : m_location(location), m_cutter(std::move(cutter)),
      m_engine(location.isServer() ? Engine::PostgreSQL : Engine::SQLite)
{
    open();
}

Database::Database(InMemory)
{
    m_location.file = u":memory:"_s;
    open();
}

std::unique_ptr<Database> Database::inMemory()
{
    return std::unique_ptr<Database>(new Database(InMemory{}));
}

Database::~Database()
{
    QSqlDatabase::removeDatabase(m_connectionName);
    if (m_cutter)
        m_cutter->release();
}

void Database::open()
{
    m_connectionName = u"quotedesk-"_s + QUuid::createUuid().toString(QUuid::Id128);
    try {
        connect();
        prepareSchema(*this);
        changedElsewhere();
    } catch (...) {
        QSqlDatabase::removeDatabase(m_connectionName);
        throw;
    }
}

void Database::connect()
{
    if (!QSqlDatabase::contains(m_connectionName)) {
        const bool server = m_engine == Engine::PostgreSQL;
        QSqlDatabase fresh = QSqlDatabase::addDatabase(server ? u"QPSQL"_s : u"QSQLITE"_s, m_connectionName);
        if (!fresh.isValid())
            throw StoreError(Text::tr("%1 cannot be opened: the database driver is not installed.")
                                 .arg(m_location.text()));
        if (server) {
            const QUrlQuery extra(m_location.server);
            const QString socket = extra.queryItemValue(u"host"_s, QUrl::FullyDecoded);
            fresh.setHostName(socket.isEmpty() ? m_location.server.host() : socket);
            if (m_location.server.port() > 0)
                fresh.setPort(m_location.server.port());
            fresh.setUserName(m_location.server.userName());
            fresh.setPassword(m_location.server.password());
            fresh.setDatabaseName(m_location.server.path().mid(1));
            QString options = u"application_name=QuoteDesk;"_s + lineLimits();
            for (const QString &option : m_location.options)
                options += u';' + option;
            fresh.setConnectOptions(options);
        } else {
            fresh.setDatabaseName(m_location.file);
            fresh.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=%1"_s.arg(Patience));
        }
    }
    if (isFile())
        prepareDatabaseFile(m_location.file);
    QSqlDatabase database = connection();
    if (!database.open()) {
        const QSqlError error = database.lastError();
        if (m_engine == Engine::SQLite)
            raise(error);
        // The driver has the words of the server's own library alone.
        for (const char *wish : {"no password supplied", "password authentication failed"}) {
            if (error.text().contains(QLatin1StringView(wish)))
                throw StoreNeedsPassword(
                    Text::tr("The database server of %1 does not accept the password, or asks for one.")
                        .arg(m_location.text()),
                    error.text());
        }
        raiseUnreachable(error.text());
    }
    if (m_cutter && m_engine == Engine::PostgreSQL)
        m_cutter->hold(database);
    m_busy = false;
    const QStringList settings =
        m_engine == Engine::SQLite
            // Full: a quote that was reported as saved is there after the power has failed.
            ? QStringList{u"PRAGMA journal_mode = WAL"_s, u"PRAGMA synchronous = FULL"_s,
                          u"PRAGMA foreign_keys = ON"_s}
            : QStringList{u"SET search_path TO quotedesk"_s, u"SET lock_timeout TO %1"_s.arg(Patience),
                          u"SET statement_timeout TO %1"_s.arg(LongestStatement)};
    for (const QString &setting : settings) {
        QSqlQuery query(database);
        if (!query.exec(setting))
            raise(query.lastError());
    }
    if (isFile())
        m_file = identityOf(m_location.file);
}

bool Database::isFile() const
{
    return m_engine == Engine::SQLite && m_location.file != u":memory:"_s;
}

bool Database::isLost() const
{
    return !connection().isOpen();
}

void Database::connectIfLost()
{
    // What connects anew runs statements too. On a file system that numbers a file differently each time they
    // would connect anew without end.
    if (m_connecting)
        return;
    const QScopedValueRollback connecting(m_connecting, true);
    if (isFile()) {
        const std::optional<FileIdentity> now = identityOf(m_location.file);
        if (now != m_file && !isLost()) {
            // What is written into a file without a name is lost with the program. What stands beside the
            // file is brought into it, wherever it is now; closing alone does not, and would leave that to
            // the file that is put in its place.
            QSqlQuery(connection()).exec(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
            connection().close();
        }
        if (!now)
            raise(Text::tr("The file is not there any more; put it back."));
    }
    if (!isLost())
        return;
    close();
    if (isCut())
        raiseUnreachable({});
    auto closing = qScopeGuard([this] { close(); });
    connect();
    // What was put back may be an older copy.
    if (isFile())
        prepareSchema(*this);
    if (m_whenConnected)
        m_whenConnected();
    closing.dismiss();
}

void Database::close()
{
    connection().close();
    if (m_cutter)
        m_cutter->release();
}

bool Database::execute(QSqlQuery &query, const QString &statement, const QVariantList &values) const
{
    if (values.isEmpty())
        return query.exec(statement);
    if (m_engine == Engine::SQLite) {
        if (!query.prepare(statement))
            return false;
        for (const QVariant &value : values)
            query.addBindValue(storable(value));
        return query.exec();
    }
    // The values are written into the statement, as the driver itself does when it runs a prepared one; that
    // saves two of three round trips, and an error leaves no prepared statement behind.
    const QSqlDriver *const driver = connection().driver();
    QString text;
    auto value = values.cbegin();
    qsizetype from = 0;
    for (qsizetype mark = statement.indexOf(u'?'); mark >= 0; mark = statement.indexOf(u'?', from)) {
        text += QStringView(statement).sliced(from, mark - from);
        from = mark + 1;
        if (!value->isValid()) {
            text += u"NULL"_s;
        } else {
            QSqlField field(QString(), value->metaType());
            field.setValue(storable(*value));
            text += driver->formatValue(field);
        }
        ++value;
    }
    text += QStringView(statement).sliced(from);
    return query.exec(text);
}

QSqlQuery Database::run(const QString &statement, const QVariantList &values)
{
    if (!m_busy)
        connectIfLost();
    QSqlQuery query(connection());
    // On PostgreSQL it would forbid a second statement while the rows of the first are read.
    query.setForwardOnly(m_engine == Engine::SQLite);
    if (execute(query, statement, values))
        return query;
    const QSqlError error = query.lastError();
    if (m_engine == Engine::PostgreSQL && meansLost(error.nativeErrorCode()))
        close();
    if (!m_busy && isLost() && !isCut()) {
        // The server was away and may be back; nothing can have been begun.
        connectIfLost();
        query = QSqlQuery(connection());
        if (execute(query, statement, values))
            return query;
        raise(query.lastError());
    }
    raise(error);
}

bool Database::next(QSqlQuery &query) const
{
    if (query.next())
        return true;
    if (query.lastError().isValid())
        raise(query.lastError());
    return false;
}

QVariant Database::single(const QString &statement, const QVariantList &values)
{
    QSqlQuery query = run(statement, values);
    return next(query) ? query.value(0) : QVariant();
}

void Database::raise(const QSqlError &error) const
{
    const QString state = error.nativeErrorCode();
    const QString details = error.text().trimmed();
    if (m_engine == Engine::PostgreSQL && (meansLost(state) || isLost()))
        raiseUnreachable(details);
    QString reason = m_engine == Engine::SQLite ? sqliteReason(state.toInt()) : postgresReason(state);
    if (reason.isEmpty())
        reason = error.databaseText().trimmed();
    raise(reason, details);
}

void Database::raiseUnreachable(const QString &details) const
{
    throw StoreUnreachable(Text::tr("The database server of %1 does not answer.").arg(m_location.text()),
                           details);
}

void Database::raise(const QString &reason, const QString &details) const
{
    throw StoreError(Text::tr("The database %1 cannot be used. %2").arg(m_location.text(), reason), details);
}

qint64 Database::newID()
{
    run(u"UPDATE store_state SET LastID = LastID + 1"_s);
    return single(u"SELECT LastID FROM store_state"_s).toLongLong();
}

void Database::countChange()
{
    run(u"UPDATE store_state SET ChangeCount = ChangeCount + 1"_s);
    m_countedChange = single(u"SELECT ChangeCount FROM store_state"_s).toLongLong();
}

bool Database::changedElsewhere()
{
    const qint64 now = single(u"SELECT ChangeCount FROM store_state"_s).toLongLong();
    const bool changed = m_missedChange || now != m_seenChange;
    m_seenChange = now;
    m_missedChange = false;
    return changed;
}

void Database::begin(const QString &statement)
{
    if (m_busy)
        throw StoreError(Text::tr("The database is busy with other work of this program."));
    m_countedChange = -1;
    run(statement);
    m_busy = true;
}

void Database::commit()
{
    run(u"COMMIT"_s);
    if (m_countedChange >= 0) {
        m_missedChange = m_missedChange || m_countedChange != m_seenChange + 1;
        m_seenChange = m_countedChange;
    }
    ended();
}

void Database::rollback() noexcept
{
    // The engine may have undone the work itself, or be gone with it.
    QSqlQuery query(connection());
    if (!isLost())
        query.exec(u"ROLLBACK"_s);
    ended();
}

void Database::ended() noexcept
{
    m_busy = false;
    if (m_whenIdle)
        m_whenIdle();
}

Transaction::Transaction(Database &database, Kind kind) : m_database(database)
{
    if (database.engine() == Database::Engine::SQLite)
        database.begin(kind == Write ? u"BEGIN IMMEDIATE"_s : u"BEGIN"_s);
    else
        database.begin(kind == Write ? u"BEGIN"_s : u"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"_s);
}

Transaction::~Transaction()
{
    if (m_open)
        m_database.rollback();
}

void Transaction::commit()
{
    m_database.commit();
    m_open = false;
}

namespace
{
constexpr int RowsAtOnce = 100;
}

BulkInsert::BulkInsert(Database &database, const QString &table, const QStringList &columns)
    : m_database(database), m_head(u"INSERT INTO %1 (%2) VALUES "_s.arg(table, columns.join(u", "_s))),
      m_marks(u'(' + QStringList(columns.size(), u"?"_s).join(u',') + u')'), m_compiled(database.connection())
{
    if (database.engine() == Database::Engine::SQLite && !m_compiled.prepare(m_head + m_marks))
        database.raise(m_compiled.lastError());
}

void BulkInsert::add(const QVariantList &row)
{
    if (m_database.engine() == Database::Engine::SQLite) {
        for (const QVariant &value : row)
            m_compiled.addBindValue(storable(value));
        if (!m_compiled.exec())
            m_database.raise(m_compiled.lastError());
        return;
    }
    m_values += row;
    if (++m_rows == RowsAtOnce)
        flush();
}

void BulkInsert::finish()
{
    if (m_rows > 0)
        flush();
}

void BulkInsert::flush()
{
    m_database.run(m_head + QStringList(m_rows, m_marks).join(u','), m_values);
    m_values.clear();
    m_rows = 0;
}

} // namespace QuoteDesk
