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

/// The busy timeout while another program writes.
constexpr int busyTimeoutMs = 10'000;

/// The time limit for a statement on the server: a statement that nobody waits for any more must not hold its
/// locks for ever.
constexpr int statementTimeoutMs = 60'000;

/// The limits of a connection to a server: connecting takes at most five seconds, and a dead connection is
/// noticed within half a minute. They do not help against a server that is reachable but does not answer;
/// LineCutter does.
QString lineLimits()
{
    return u"connect_timeout=5;keepalives=1;keepalives_idle=10;keepalives_interval=5;"
           "keepalives_count=3;tcp_user_timeout=15000"_s;
}

/// SQLite's error codes with a message of their own.
enum SqliteError {
    SqliteForbidden = 3,
    SqliteBusy = 5,
    SqliteLocked = 6,
    SqliteReadOnly = 8,
    SqliteInputOutput = 10,
    SqliteCorrupt = 11,
    SqliteFull = 13,
    SqliteCannotOpen = 14,
    SqliteNotADatabase = 26,
};

/// The message for an SQLite error; blank for errors without a message of their own.
QString sqliteReason(int code)
{
    // The upper bits are details of the same error.
    constexpr int errorBits = 0xff;
    switch (code & errorBits) {
    case SqliteBusy:
    case SqliteLocked:
        return Text::tr("Another program is writing to it. Try again in a moment.");
    case SqliteForbidden:
    case SqliteReadOnly:
    case SqliteCannotOpen:
        return Text::tr(
            "The file or its folder is read-only. Allow writing to both, or choose another file.");
    case SqliteInputOutput:
        return Text::tr(
            "The disk cannot be read or written. Check the disk and the way to it, then try again.");
    case SqliteCorrupt:
        return Text::tr("The file is damaged. Put a backup copy in its place.");
    case SqliteFull:
        return Text::tr("The disk is full. Make room on it, then try again.");
    case SqliteNotADatabase:
        return Text::tr("The file is not a database. Choose another file, or a name that no file has yet.");
    default:
        return {};
    }
}

/// PostgreSQL's error codes with a message of their own; a class is the beginning of its codes.
namespace PostgresState
{
constexpr auto DiskFull = "53100"_L1;
constexpr auto LockNotAvailable = "55P03"_L1;
constexpr auto RollbackClass = "40"_L1;
constexpr auto QueryCanceled = "57014"_L1;
constexpr auto ReadOnlyTransaction = "25006"_L1;
constexpr auto InsufficientPrivilege = "42501"_L1;
constexpr auto ConnectionClass = "08"_L1;
constexpr auto ShutdownClass = "57P0"_L1;
} // namespace PostgresState

/// The same for PostgreSQL's five-character error code.
QString postgresReason(const QString &state)
{
    if (state == PostgresState::DiskFull)
        return Text::tr("The server's disk is full. Ask whoever runs the server to make room.");
    if (state == PostgresState::LockNotAvailable || state.startsWith(PostgresState::RollbackClass))
        return Text::tr("Another program is writing to it. Try again in a moment.");
    if (state == PostgresState::QueryCanceled)
        return Text::tr("The server has taken too long. Try again in a moment.");
    if (state == PostgresState::ReadOnlyTransaction)
        return Text::tr("The server allows reading only. Ask whoever runs the server to allow writing.");
    if (state == PostgresState::InsufficientPrivilege)
        return Text::tr(
            "The server does not allow its user to do that. Ask whoever runs the server for the right.");
    return {};
}

/// Whether the server has ended the session. Error codes come from the server: an error without one means
/// that the client library could not reach it, even when it considers the connection open.
bool meansLost(const QString &state)
{
    return state.isEmpty() || state.startsWith(PostgresState::ConnectionClass) ||
           state.startsWith(PostgresState::ShutdownClass);
}

/// Nothing when the file does not exist.
std::optional<FileIdentity> identityOf(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat file = {};
    if (stat(QFile::encodeName(path).constData(), &file) == 0)
        return FileIdentity(file.st_dev, file.st_ino);
#else // Windows does not let an open file be removed
    if (QFileInfo::exists(path))
        return FileIdentity();
#endif
    return std::nullopt;
}

/// The value for the driver. Drivers store a null text as NULL, so it becomes an empty text. Texts with a
/// zero character are refused: a server does not accept them, and both engines have to behave alike.
QVariant storable(const QVariant &value)
{
    constexpr qsizetype Enough = 60;
    if (value.metaType() != QMetaType::fromType<QString>())
        return value;
    const QString text = value.toString();
    if (text.isNull())
        return QVariant(u""_s);
    if (text.contains(QChar(u'\0')))
        throw StoreError(Text::tr("The text \"%1\" has a character in it that no database can keep (number "
                                  "0). Type that text again.")
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
        configure(fresh);
    }
    if (isFile())
        prepareDatabaseFile(m_location.file);
    QSqlDatabase database = connection();
    if (!database.open()) {
        const QSqlError error = database.lastError();
        if (m_engine == Engine::SQLite)
            raise(error);
        // The driver only has the message of the server's client library.
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
    setUpSession(database);
    if (isFile())
        m_file = identityOf(m_location.file);
}

/// Sets the address and options of a new connection.
void Database::configure(QSqlDatabase &fresh) const
{
    if (m_engine == Engine::SQLite) {
        fresh.setDatabaseName(m_location.file);
        fresh.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=%1"_s.arg(busyTimeoutMs));
        return;
    }
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
}

void Database::setUpSession(QSqlDatabase &database)
{
    const QStringList settings =
        m_engine == Engine::SQLite
            // Full: a quote that was reported as saved survives a power failure.
            ? QStringList{u"PRAGMA journal_mode = WAL"_s, u"PRAGMA synchronous = FULL"_s,
                          u"PRAGMA foreign_keys = ON"_s}
            : QStringList{u"SET search_path TO quotedesk"_s, u"SET lock_timeout TO %1"_s.arg(busyTimeoutMs),
                          u"SET statement_timeout TO %1"_s.arg(statementTimeoutMs)};
    for (const QString &setting : settings) {
        QSqlQuery query(database);
        if (!query.exec(setting))
            raise(query.lastError());
    }
    // data_version has no meaning across connections.
    m_seenVersion = -1;
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
    // Prevents infinite reconnects: connecting runs statements, too, and some file systems give a file
    // another number each time.
    if (m_connecting)
        return;
    const QScopedValueRollback connecting(m_connecting, true);
    if (isFile()) {
        const std::optional<FileIdentity> now = identityOf(m_location.file);
        if (now != m_file && !isLost()) {
            // The open file was moved away or replaced. Its write-ahead log is written into the moved file
            // first; closing alone does not do that, and the log would remain for the new file.
            QSqlQuery(connection()).exec(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
            connection().close();
        }
        if (!now)
            raise(Text::tr("The file is no longer there. Put it back, then try again."));
    }
    if (!isLost())
        return;
    close();
    if (isCut())
        raiseUnreachable({});
    auto closing = qScopeGuard([this] { close(); });
    connect();
    // The file may have been replaced by an older copy.
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
    // The values are inserted into the statement, as the driver does for prepared ones. This saves two of
    // three round trips, and an error leaves no prepared statement behind.
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
    // In PostgreSQL this would prevent a second statement while the first one's rows are read.
    query.setForwardOnly(m_engine == Engine::SQLite);
    if (execute(query, statement, values))
        return query;
    const QSqlError error = query.lastError();
    if (m_engine == Engine::PostgreSQL && meansLost(error.nativeErrorCode()))
        close();
    // A connection that is lost while reconnecting fails; the caller of the reconnect reports it.
    if (!m_busy && !m_connecting && isLost() && !isCut()) {
        // The server was lost and may be back; outside a transaction nothing was begun.
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
    throw StoreUnreachable(
        Text::tr("The database server of %1 does not answer. Check the network, then try again.")
            .arg(m_location.text()),
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

void Database::announceChange()
{
    // On a server the lock of this row makes writers wait for each other, so that no change is overwritten
    // unseen.
    lookForChanges(m_engine == Engine::PostgreSQL ? u" FOR UPDATE"_s : QString());
    m_seenChange = QUuid::createUuid().toString(QUuid::Id128);
    run(u"UPDATE store_state SET LastChange = ?"_s, {m_seenChange});
}

bool Database::changedElsewhere()
{
    lookForChanges();
    return std::exchange(m_othersChanged, false);
}

void Database::lookForChanges(const QString &lock)
{
    if (m_engine == Engine::SQLite) {
        const qint64 version = single(u"PRAGMA data_version"_s).toLongLong();
        if (std::exchange(m_seenVersion, version) == version)
            return;
        // Others have written something. Drafts and new ids do not concern the lists; the key tells them
        // apart.
    }
    const QString change = single(u"SELECT LastChange FROM store_state"_s + lock).toString();
    if (std::exchange(m_seenChange, change) != change)
        m_othersChanged = true;
}

void Database::begin(const QString &statement)
{
    if (m_busy)
        throw StoreError(Text::tr(
            "The database is busy with other work of this program. Try again when that work is done."));
    run(statement);
    m_busy = true;
}

void Database::commit()
{
    run(u"COMMIT"_s);
    ended();
}

void Database::rollback() noexcept
{
    // The engine may have rolled back already, or the connection may be lost.
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
