#include "ZelTest.h"
// labels: postgresql slow

#include "PostgresServer.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
const char *const holdServer = "--hold-server";
constexpr int Patience = 60000;
} // namespace

/// The tests' own PostgreSQL server: it starts, reports why it does not, and never outlives the test's
/// process.
class TestPostgresServer : public ZelTest
{
    Q_OBJECT

    static bool runs(qint64 process) { return ::kill(static_cast<pid_t>(process), 0) == 0; }

    /// A child process that runs a server; it reports the server's process id and folder.
    struct Holder {
        Holder()
        {
            Process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(holdServer)});
            while (!Process.canReadLine() && Process.waitForReadyRead(Patience)) {
            }
            const QStringList said = QString::fromUtf8(Process.readLine()).trimmed().split(u' ');
            Server = said.value(0).toLongLong();
            Folder = said.value(1);
        }
        ~Holder()
        {
            Process.kill();
            Process.waitForFinished();
        }
        Q_DISABLE_COPY_MOVE(Holder)
        QProcess Process;
        qint64 Server;
        QString Folder;
    };

    static void checkGone(const Holder &holder)
    {
        QTRY_VERIFY_WITH_TIMEOUT(!runs(holder.Server), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(holder.Folder), Patience);
    }

private Q_SLOTS:
    void stopsWithItsObject()
    {
        qint64 process = 0;
        QString folder;
        {
            PostgresServer server;
            QCOMPARE(server.ProcessId(), 0);
            QVERIFY2(server.Start(), qPrintable(server.Reason()));
            process = server.ProcessId();
            folder = server.Host();
            QVERIFY(process > 0);
            QVERIFY(runs(process));
            QVERIFY(QFileInfo::exists(folder + u"/.s.PGSQL.5432"_s));
        }
        QVERIFY(!runs(process));
        QVERIFY(!QFileInfo::exists(folder));
    }

    void goesWithAKilledProcess_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("killed") << SIGKILL;
        QTest::newRow("aborted") << SIGABRT;
    }

    void goesWithAKilledProcess()
    {
        QFETCH(const int, signal);
        Holder holder;
        QVERIFY(holder.Server > 0);
        QVERIFY(runs(holder.Server));
        QVERIFY(QFileInfo::exists(holder.Folder));
        QCOMPARE(::kill(static_cast<pid_t>(holder.Process.processId()), signal), 0);
        checkGone(holder);
    }

    void goesWithItsKeeper()
    {
        Holder holder;
        QVERIFY(runs(holder.Server));
        // The server's parent is the shell that started it (the keeper).
        QFile status(u"/proc/%1/stat"_s.arg(holder.Server));
        QVERIFY(status.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(status.readAll());
        const int keeper = text.mid(text.lastIndexOf(u')') + 2).section(u' ', 1, 1).toInt();
        QVERIFY(keeper > 1);
        QCOMPARE(::kill(keeper, SIGKILL), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!runs(holder.Server), Patience);
    }

    void saysWhyItDoesNotStart()
    {
        PostgresServer server;
        QVERIFY(!server.Start({u"no_such_setting=1"_s}));
        QVERIFY2(server.Reason().startsWith(u"the PostgreSQL server does not start; its log ends with\n"_s),
                 qPrintable(server.Reason()));
        QVERIFY2(server.Reason().contains(u"no_such_setting"_s), qPrintable(server.Reason()));
        QCOMPARE(server.ProcessId(), 0);
    }
};

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], holdServer) == 0) {
        const QCoreApplication app(argc, argv);
        PostgresServer server;
        if (!server.Start())
            return 1;
        std::printf("%lld %s\n", static_cast<long long>(server.ProcessId()), qPrintable(server.Host()));
        std::fflush(stdout);
        for (;;)
            ::pause();
    }
    return ZelTesting::run(argc, argv, [] { return std::make_unique<TestPostgresServer>(); });
}
#include "tst_postgresserver.moc"
