#include "database/PrivateFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace QuoteDesk
{

bool makePrivateFolder(const QString &path)
{
#ifdef Q_OS_UNIX
    const QFileInfo folder(path);
    if (folder.isDir())
        return true;
    if (!folder.isRoot() && !makePrivateFolder(folder.absolutePath()))
        return false;
    const QByteArray name = QFile::encodeName(path);
    // mkdir applies the umask, which may even remove the owner's permissions; so chmod follows.
    return mkdir(name.constData(), S_IRWXU) == 0 ? chmod(name.constData(), S_IRWXU) == 0
                                                 : QFileInfo(path).isDir();
#else
    return QDir().mkpath(path);
#endif
}

bool makePrivateFile(const QString &path)
{
#ifdef Q_OS_UNIX
    const int file =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    const bool made = fchmod(file, S_IRUSR | S_IWUSR) == 0;
    ::close(file);
    return made;
#else
    QFile file(path);
    return file.open(QIODevice::ReadWrite);
#endif
}

void keepPrivate(const QString &path)
{
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(path);
    constexpr mode_t Others = S_IRWXG | S_IRWXO;
    struct stat found = {};
    if (stat(name.constData(), &found) == 0 && (found.st_mode & Others) != 0)
        chmod(name.constData(), found.st_mode & ~Others & 07777);
#else
    Q_UNUSED(path)
#endif
}

} // namespace QuoteDesk
