#include "database/DatabaseFile.h"

#include "database/PrivateFiles.h"
#include "database/StoreError.h"
#include "database/StoreLocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUrl>
#include <QUuid>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Database)
};

[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw StoreError(
        Text::tr("The database %1 cannot be used. %2").arg(QDir::toNativeSeparators(path), reason));
}

/// Whether a file is a database or is still to become one. SQLite itself would take a file of a few bytes for
/// an empty one and write over it.
bool isDatabaseOrNew(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return true; // what cannot be read is told by opening it
    return file.read(16) == QByteArray("SQLite format 3", 16);
}

enum class Owner : std::uint8_t { Nobody, Us, Others };

/// Whose the tables of a database are, without writing to it; nobody's too when they cannot be read. With
/// "immutable=1" it is taken as it stands, without a lock and without a file for one beside it.
Owner ownerOf(const QString &path, const char *how)
{
    QUrl address = QUrl::fromLocalFile(path);
    address.setQuery(QLatin1StringView(how));
    const QString name = u"quotedesk-look-"_s + QUuid::createUuid().toString(QUuid::Id128);
    const auto away = qScopeGuard([&name] { QSqlDatabase::removeDatabase(name); });
    QSqlDatabase look = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
    look.setConnectOptions(u"QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"_s);
    look.setDatabaseName(QString::fromLatin1(address.toEncoded()));
    if (!look.open())
        return Owner::Nobody;
    QSqlQuery query(look);
    if (!query.exec(u"SELECT count(*), count(CASE WHEN name IN ('schema_version', 'store_state')"
                    " THEN 1 END) FROM sqlite_master"_s) ||
        !query.next() || query.value(0).toInt() == 0)
        return Owner::Nobody;
    return query.value(1).toInt() == 2 ? Owner::Us : Owner::Others;
}

/// Opening a database for writing and asking it for its journal changes it already.
bool isOfAnotherProgram(const QString &path)
{
    Owner owner = ownerOf(path, "immutable=1");
    // All of it may still stand beside it.
    if (owner == Owner::Nobody && QFileInfo(path + u"-wal"_s).size() > 0)
        owner = ownerOf(path, "mode=ro");
    return owner == Owner::Others;
}

/// What was made by an earlier version, or with other rights.
void mendRights(const QFileInfo &file)
{
    keepPrivate(file.filePath());
    for (const char *end : {"-wal", "-shm", "-journal"})
        keepPrivate(file.filePath() + QLatin1StringView(end));
    const QDir folder = file.absoluteDir();
    for (const QString &mark :
         folder.entryList({file.fileName() + u".running-*"_s}, QDir::Files | QDir::System))
        keepPrivate(folder.filePath(mark));
    // The program's own folder. Another one is its owner's affair: it may be the desktop, or shared.
    if (folder == QFileInfo(StoreLocation::inUserData().file).absoluteDir())
        keepPrivate(folder.path());
}

} // namespace

void prepareDatabaseFile(const QString &path)
{
    const QFileInfo file(path);
    if (!makePrivateFolder(file.absolutePath()))
        throw StoreError(
            Text::tr(
                "The folder %1 cannot be made. Make it yourself, or choose another place for the database.")
                .arg(QDir::toNativeSeparators(file.absolutePath())));
    if (file.isDir())
        refuse(path, Text::tr("It is a folder. Choose a file."));
    // A pipe, or a device: to open it could wait for ever.
    if (file.exists() && !file.isFile())
        refuse(path, Text::tr("It is not an ordinary file. Choose another file."));
    if (!isDatabaseOrNew(path))
        refuse(path,
               Text::tr("The file is not a database. Choose another file, or a name that no file has yet."));
    if (file.size() > 0 && isOfAnotherProgram(path))
        throw StoreError(Text::tr("The database %1 belongs to another program. Choose another file.")
                             .arg(QDir::toNativeSeparators(path)));
    // SQLite gives what it writes beside the file the rights of the file. That it cannot be made is told by
    // opening it.
    if (!file.exists())
        makePrivateFile(path);
    mendRights(QFileInfo(path));
}

} // namespace QuoteDesk
