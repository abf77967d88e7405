#include "Frames.h"
#include "ZelTest.h"

#include "toolkit/TApplication.h"

#include <QTimer>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
/// A signal with arguments and functions that can be connected to it.
class Bell : public QObject
{
    Q_OBJECT
public:
    void hear(int times) { heard.append(times); }
    void refuse() { throw Exception(u"Not now."_s); }
    QList<int> heard;

Q_SIGNALS:
    void rung(int times, const QString &where);
};
} // namespace

/// connectGuarded and exceptions in slots.
class tst_Application : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void aGuardedSlotTakesTheArgumentsItWants()
    {
        Bell bell;
        QStringList told;
        connectGuarded(&bell, &Bell::rung, &bell, [&] { told.append(u"none"_s); });
        connectGuarded(&bell, &Bell::rung, &bell, [&](int times) { told.append(QString::number(times)); });
        connectGuarded(&bell, &Bell::rung, &bell,
                       [&](int times, const QString &where) { told.append(where + QString::number(times)); });
        connectGuarded(&bell, &Bell::rung, &bell, &Bell::hear);
        Q_EMIT bell.rung(3, u"door"_s);
        QCOMPARE(told, QStringList({u"none"_s, u"3"_s, u"door3"_s}));
        QCOMPARE(bell.heard, QList<int>{3});
    }

    void whatASlotRaisesIsReportedAndTheOthersRun()
    {
        ReportCatcher report;
        Bell bell;
        connectGuarded(&bell, &Bell::rung, &bell, &Bell::refuse);
        connectGuarded(&bell, &Bell::rung, &bell, [](int times) {
            if (times > 1)
                throw std::runtime_error("Too often.");
        });
        connectGuarded(&bell, &Bell::rung, &bell, &Bell::hear);
        Q_EMIT bell.rung(1, {});
        QCOMPARE(report.messages, QStringList{u"Not now."_s});
        Q_EMIT bell.rung(2, {});
        QCOMPARE(report.messages, QStringList({u"Not now."_s, u"Not now."_s, u"Too often."_s}));
        QCOMPARE(bell.heard, QList<int>({1, 2}));
    }

    void aGuardedConnectionEndsLikeAnyOther()
    {
        Bell bell;
        auto listener = std::make_unique<Bell>();
        connectGuarded(&bell, &Bell::rung, listener.get(), [&](int times) { bell.hear(times); });
        connectGuarded(
            &bell, &Bell::rung, &bell, [&](int times) { bell.hear(10 * times); }, Qt::SingleShotConnection);
        const auto connection = connectGuarded(&bell, &Bell::rung, &bell, &Bell::hear);
        Q_EMIT bell.rung(1, {});
        QCOMPARE(bell.heard, QList<int>({1, 10, 1}));
        listener.reset();
        Q_EMIT bell.rung(2, {});
        QCOMPARE(bell.heard, QList<int>({1, 10, 1, 2}));
        QVERIFY(disconnect(connection));
        Q_EMIT bell.rung(3, {});
        QCOMPARE(bell.heard.size(), 4);
    }

    void aPrivateSignalIsHeardToo()
    {
        QTimer timer;
        int times = 0;
        connectGuarded(&timer, &QTimer::timeout, this, [&] { ++times; });
        timer.start(0);
        QTRY_VERIFY(times > 0);
    }
};

ZEL_TEST_MAIN(tst_Application)
#include "tst_application.moc"
