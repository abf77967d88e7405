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

/// Whether a file is a database or is still empty. SQLite would treat a file of a few bytes as empty and
/// overwrite it.
bool isDatabaseOrNew(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return true; // opening reports why it cannot be read
    return file.read(16) == QByteArray("SQLite format 3", 16);
}

enum class Owner : std::uint8_t { Nobody, Us, Others };

/// Whose tables a database has, read without writing to it; Nobody when they cannot be read. With
/// "immutable=1" SQLite reads the file as it is, without a lock and without a -wal file.
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

/// Opening a database for writing and setting its journal mode would change it.
bool isOfAnotherProgram(const QString &path)
{
    Owner owner = ownerOf(path, "immutable=1");
    // All tables may still be in the -wal file.
    if (owner == Owner::Nobody && QFileInfo(path + u"-wal"_s).size() > 0)
        owner = ownerOf(path, "mode=ro");
    return owner == Owner::Others;
}

/// Corrects the permissions of files from an earlier version or with other permissions.
void mendRights(const QFileInfo &file)
{
    keepPrivate(file.filePath());
    for (const char *end : {"-wal", "-shm", "-journal"})
        keepPrivate(file.filePath() + QLatin1StringView(end));
    const QDir folder = file.absoluteDir();
    for (const QString &mark :
         folder.entryList({file.fileName() + u".running-*"_s}, QDir::Files | QDir::System))
        keepPrivate(folder.filePath(mark));
    // Only the program's own folder: another one may be the desktop or a shared folder.
    if (folder == QFileInfo(StoreLocation::inUserData().file).absoluteDir())
        keepPrivate(folder.path());
}

} // namespace

void prepareDatabaseFile(const QString &path)
{
    const QFileInfo file(path);
    if (!makePrivateFolder(file.absolutePath()))
        throw StoreError(Text::tr("The folder %1 cannot be created. Make it yourself, or choose another "
                                  "place for the database.")
                             .arg(QDir::toNativeSeparators(file.absolutePath())));
    if (file.isDir())
        refuse(path, Text::tr("It is a folder. Choose a file."));
    // Opening a pipe or a device could block for ever.
    if (file.exists() && !file.isFile())
        refuse(path, Text::tr("It is not an ordinary file. Choose another file."));
    if (!isDatabaseOrNew(path))
        refuse(path,
               Text::tr("The file is not a database. Choose another file, or a name that no file has yet."));
    if (file.size() > 0 && isOfAnotherProgram(path))
        throw StoreError(Text::tr("The database %1 belongs to another program. Choose another file.")
                             .arg(QDir::toNativeSeparators(path)));
    // SQLite gives its -wal and -shm files the permissions of this file. When it cannot be created, opening
    // it reports why.
    if (!file.exists())
        makePrivateFile(path);
    mendRights(QFileInfo(path));
}

} // namespace QuoteDesk
