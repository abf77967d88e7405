#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QStringList>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

/// Counts the application's events while nobody touches it. The counts do not depend on how busy the machine
/// is: a window at rest requests no layout and paints no more than a blinking cursor.
class IdleWatch : public QObject
{
public:
    IdleWatch() { QCoreApplication::instance()->installEventFilter(this); }
    ~IdleWatch() override { QCoreApplication::instance()->removeEventFilter(this); }
    Q_DISABLE_COPY_MOVE(IdleWatch)

    /// Waits until no layout has been requested for 200 ms. Returns false when this does not happen.
    bool settle()
    {
        for (int attempt = 0; attempt < 50; ++attempt) {
            clear();
            QTest::qWait(200);
            if (count(QEvent::LayoutRequest) == 0)
                return true;
        }
        return false;
    }

    /// Waits for so long and returns what exceeded the limits meanwhile, one line per event type or for the
    /// processor time; empty when nothing did.
    QString rest(int milliseconds)
    {
        clear();
        const qint64 before = processorMilliseconds();
        QTest::qWait(milliseconds);
        const qint64 used = processorMilliseconds() - before;
        QStringList said;
        const auto expect = [&](QEvent::Type type, const char *name, int most) {
            if (count(type) > most)
                said.append(
                    QStringLiteral("%1 events %2: %3")
                        .arg(count(type))
                        .arg(QLatin1String(name), m_receivers.value(type).join(QStringLiteral(", "))));
        };
        // A cursor blinks about twice a second; each blink paints the window and its panels.
        const int often = 20 * qMax(1, milliseconds / 1000);
        expect(QEvent::LayoutRequest, "LayoutRequest", 0);
        expect(QEvent::UpdateRequest, "UpdateRequest", often);
        expect(QEvent::Timer, "Timer", often);
        expect(QEvent::Paint, "Paint", 10 * often);
        // Far above what a window at rest uses, far below what an endless loop uses.
        if (used > milliseconds / 5)
            said.append(QStringLiteral("%1 ms of processor time in %2 ms").arg(used).arg(milliseconds));
        return said.join(u'\n');
    }

    int count(QEvent::Type type) const { return m_counts.value(type); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        ++m_counts[event->type()];
        QStringList &receivers = m_receivers[event->type()];
        if (receivers.size() < 8) {
            const QString name =
                QLatin1String(watched->metaObject()->className()) + u' ' + watched->objectName();
            if (!receivers.contains(name))
                receivers.append(name);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void clear()
    {
        m_counts.clear();
        m_receivers.clear();
    }
    /// The processor time of this process; 0 on Windows, where the C library only has the wall clock.
    static qint64 processorMilliseconds()
    {
#ifdef Q_OS_UNIX
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        const auto milliseconds = [](const timeval &time) {
            return qint64(time.tv_sec) * 1000 + qint64(time.tv_usec) / 1000;
        };
        return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
#else
        return 0;
#endif
    }

    QHash<int, int> m_counts;
    QHash<int, QStringList> m_receivers;
};
