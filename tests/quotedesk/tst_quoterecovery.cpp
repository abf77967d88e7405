#include "ZelTest.h"
// labels: slow

#include "DeskWindow.h"

#include "desk/RecoveryDialog.h"
#include "package/ZelCommonFrames.h"
#include "quote/FundsPage.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QProcess>
#include <QRandomGenerator>

#include <cstdio>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

constexpr int Patience = 30'000;     // milliseconds
constexpr int LongestUnkept = 2'000; // drafts take half a second; the rest is for a busy machine

/// The text typed in a round; it differs from round to round, so it differs from the stored text.
QString typedText(int round, int keys)
{
    QString text;
    for (int i = round; i < round + keys; ++i)
        text.append(QChar(u'a' + i % 26));
    return text;
}

/// The program to be killed: opens its only quote and types into the description without a pause. After each
/// key it prints the number of keys and the time in milliseconds.
int typeForEver(const QString &file, int round)
{
    DeskWindow desk(StoreLocation::fromText(file));
    if (!desk.show())
        return 1;
    QuoteEditor *const editor = desk.window->quotes().open(desk.store->quotes().constFirst().quoteID);
    QLineEdit *const description = editor->form()->edtDescription;
    description->setFocus();
    description->selectAll();
    QElapsedTimer clock;
    clock.start();
    for (int keys = 1;; ++keys) {
        QTest::keyClicks(description, typedText(round, keys).right(1));
        std::printf("%d %lld\n", keys, static_cast<long long>(clock.elapsed()));
        std::fflush(stdout);
        QTest::qWait(25);
    }
}

} // namespace

/// What an adviser can recover after the program was killed.
class tst_quoterecovery : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void killedWhileTyping();
};

void tst_quoterecovery::killedWhileTyping()
{
    constexpr int Kills = 4;
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"quotes.db"_s);
    qint64 number = 0;
    {
        DeskWindow desk(StoreLocation::fromText(file));
        number = desk.quote(desk.client("Botha", "Piet"), 1, "Stored", 1000, 1);
    }
    for (int kill = 0; kill < Kills; ++kill) {
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QCoreApplication::applicationFilePath(),
                      {u"--type-for-ever"_s, file, QString::number(kill)});
        QVERIFY(program.waitForReadyRead(Patience));
        QTest::qSleep(static_cast<int>(QRandomGenerator::global()->bounded(500, 1000)) + LongestUnkept);
        program.kill();
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
        QList<QPair<int, qint64>> typed;
        for (const QByteArray &line : program.readAllStandardOutput().trimmed().split('\n')) {
            const QList<QByteArray> numbers = line.split(' ');
            typed.append({numbers.value(0).toInt(), numbers.value(1).toLongLong()});
        }
        const auto [keys, end] = typed.constLast();
        int surelyKept = 0;
        for (const auto &[count, time] : std::as_const(typed)) {
            if (time <= end - LongestUnkept)
                surelyKept = count;
        }

        DeskWindow desk(StoreLocation::fromText(file));
        QVERIFY(desk.show());
        QVERIFY(inDialog<RecoveryDialog>(
            [&] { desk.window->offerDrafts(); },
            [](RecoveryDialog &dialog) {
                QCOMPARE(dialog.list->topLevelItemCount(), 1);
                QTest::mouseClick(dialog.findChild<QAbstractButton *>(u"btnRestore"_s), Qt::LeftButton);
            }));
        QuoteEditor *const editor = desk.window->currentEditor();
        QVERIFY(editor);
        QVERIFY(editor->isModified());
        const QString found = editor->form()->edtDescription->text();
        // A key that was typed but not yet printed may be stored, too.
        QVERIFY2(found == typedText(kill, static_cast<int>(found.size())) && found.size() >= surelyKept &&
                     found.size() <= keys + 1,
                 qPrintable(u"%1 of %2, at least %3"_s.arg(found).arg(keys).arg(surelyKept)));
        QCOMPARE(editor->quote().quoteID, number);
        QCOMPARE(editor->quote().funds.size(), 1);
        // The stored quote stays unchanged until the adviser saves.
        QVERIFY(desk.store->quote(number).description != found);
        desk.key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(desk.store->quote(number).description, found);
        QVERIFY(desk.store->abandonedDrafts().isEmpty());
    }
}

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"zel-test"_s);
    Initialize();
    if (argc == 4 && qstrcmp(argv[1], "--type-for-ever") == 0)
        return typeForEver(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toInt());
    tst_quoterecovery test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_quoterecovery.moc"
