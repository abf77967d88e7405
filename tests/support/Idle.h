#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QStringList>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

/// Watches what the application does while nobody touches it. What is counted does not depend on how busy the
/// machine is: a window at rest asks for no layout, and for no more than the blinking of a cursor.
class IdleWatch : public QObject
{
public:
    IdleWatch() { QCoreApplication::instance()->installEventFilter(this); }
    ~IdleWatch() override { QCoreApplication::instance()->removeEventFilter(this); }
    Q_DISABLE_COPY_MOVE(IdleWatch)

    /// Waits until no layout has been asked for during a while; false when that does not end.
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

    /// Rests for so long and says what there was to be done meanwhile, a line for each thing; blank for
    /// nothing worth a word.
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
        // A cursor blinks about twice a second, and each of its windows and their panels is painted then.
        const int often = 20 * qMax(1, milliseconds / 1000);
        expect(QEvent::LayoutRequest, "LayoutRequest", 0);
        expect(QEvent::UpdateRequest, "UpdateRequest", often);
        expect(QEvent::Timer, "Timer", often);
        expect(QEvent::Paint, "Paint", 10 * often);
        // Far above what a window at rest takes, far below one that works without end.
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
    /// Of this process; 0 where the system's own count is that of the clock on the wall.
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
