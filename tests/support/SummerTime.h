#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <ctime>

/// While it lives, the machine's clocks are put forward from two to three in the night to the last Sunday of
/// March: in 2024 the hour from two on the 31st is left out.
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
