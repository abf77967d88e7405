#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <ctime>

/// Sets the time zone of Central Europe during its lifetime: on the last Sunday of March (the 31st in 2024)
/// the clocks go from two to three, so the hour from two o'clock does not exist.
class SummerTime
{
public:
    SummerTime() : m_former(qgetenv("TZ"))
    {
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        Read();
    }
    ~SummerTime()
    {
        if (m_former.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", m_former);
        Read();
    }
    Q_DISABLE_COPY_MOVE(SummerTime)

private:
    static void Read()
    {
#ifdef Q_OS_WIN
        _tzset();
#else
        tzset();
#endif
    }

    const QByteArray m_former;
};
