#include "ZelTest.h"

#include "package/ZelCommonFrames.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace ZelTesting
{
extern const char sourceFolder[]; // defined in a generated unit
}

void ZelTest::init()
{
    // The offscreen platform logs this whenever a window has a minimum size or is raised.
    QString harmless = u"This plugin does not support (propagateSizeHints|raise)\\(\\)"_s;
    // Qt's ODBC driver logs the errors of the engine, which the package throws as well.
    harmless += u"|QODBC"_s;
#ifdef Q_OS_WIN
    // Qt logs this when a window is deleted while Windows moves the keyboard focus to it.
    harmless += u"|QObject::connect: Cannot connect \\(nullptr\\)::focusObjectChanged"_s;
#endif
    QTest::failOnWarning(QRegularExpression(u"^(?!%1)"_s.arg(harmless)));
}

QString ZelTest::sourceFile(const QString &path)
{
    return QDir(QString::fromUtf8(ZelTesting::sourceFolder)).filePath(path);
}

QString ZelTest::builtProgram(const QString &name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

QString ZelTest::realCatalogue()
{
#ifdef Q_OS_WIN
    return {}; // it is compressed, and Windows has no gzip
#else
    const QString beside = sourceFile(u"../shared/data/catalogue_real.csv.gz"_s);
    return QFile::exists(beside) ? QDir::cleanPath(beside) : QString();
#endif
}

namespace ZelTesting
{
int run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make, Package package)
{
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"zel-test"_s);
    if (package == Package::Started)
        Initialize();
    const std::unique_ptr<QObject> test = make();
    return QTest::qExec(test.get(), argc, argv);
}
} // namespace ZelTesting
