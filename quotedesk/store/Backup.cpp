#include "store/Backup.h"

#include "database/PrivateFiles.h"
#include "database/StoreError.h"
#include "store/QuoteStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Backup)
};

/// Copies the database @p file to @p target, which must not exist. Returns the engine's error, blank for
/// none.
QString copyDatabase(const QString &file, const QString &target)
{
    // A connection of its own: the program's own one may be reading.
    const QString name = QUuid::createUuid().toString();
    QString error;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
        database.setDatabaseName(file);
        database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=5000"_s);
        if (database.open()) {
            QSqlQuery query(database);
            if (!query.prepare(u"VACUUM INTO ?"_s))
                error = query.lastError().text();
            query.addBindValue(target);
            if (error.isEmpty() && !query.exec())
                error = query.lastError().text();
        } else {
            error = database.lastError().text();
        }
    }
    QSqlDatabase::removeDatabase(name);
    return error;
}

} // namespace

void backUp(QuoteStore &store, const QString &path)
{
    const QString file = store.location().file;
    const QString shown = QDir::toNativeSeparators(path);
    if (file.isEmpty())
        throw StoreError(Text::tr("The quotes are on the office's server; its own backup has to copy them."));
    const QFileInfo target(path);
    if (target.canonicalFilePath() == QFileInfo(file).canonicalFilePath())
        throw StoreError(
            Text::tr("%1 is the file of the quotes itself. Choose another name or folder for the copy.")
                .arg(shown));
    // In a folder of its own beside the target: private from its first byte, and moved without being copied
    // again.
    const QTemporaryDir folder(target.absoluteDir().filePath(u".quotedesk-XXXXXX"_s));
    if (!folder.isValid())
        throw StoreError(Text::tr("The copy %1 cannot be written: %2 Choose another folder.")
                             .arg(shown, folder.errorString()));
    const QString part = folder.filePath(u"quotes.db"_s);
    if (const QString error = copyDatabase(file, part); !error.isEmpty())
        throw StoreError(
            Text::tr("The copy %1 cannot be written. Make room on the disk or choose another folder.")
                .arg(shown),
            error);
    keepPrivate(part);
    std::error_code error;
    std::filesystem::rename(std::filesystem::path(part.toStdU16String()),
                            std::filesystem::path(target.absoluteFilePath().toStdU16String()), error);
    if (error)
        throw StoreError(
            Text::tr("The copy %1 cannot be written. Make room on the disk or choose another folder.")
                .arg(shown),
            QString::fromLocal8Bit(error.message().c_str()));
}

} // namespace QuoteDesk
