#include "DebugLine.h"

#include <QString>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace
{
QByteArray awaited;
int came = 0;

#ifdef Q_OS_WIN
// Counts the awaited line. The system's function for debug output raises an exception of this code; the
// program goes on after the exception.
LONG CALLBACK watch(EXCEPTION_POINTERS *exception)
{
    constexpr DWORD printed = 0x40010006;
    const EXCEPTION_RECORD &record = *exception->ExceptionRecord;
    if (record.ExceptionCode != printed || record.NumberParameters < 2)
        return EXCEPTION_CONTINUE_SEARCH;
    if (awaited == reinterpret_cast<const char *>(record.ExceptionInformation[1]))
        ++came;
    return EXCEPTION_CONTINUE_EXECUTION;
}
#else
QtMessageHandler former = nullptr;

void watch(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtDebugMsg && message == QString::fromUtf8(awaited))
        ++came;
    else
        former(type, context, message);
}
#endif
} // namespace

DebugLine::DebugLine(const char *line)
{
    awaited = line;
    came = 0;
#ifdef Q_OS_WIN
    m_former = AddVectoredExceptionHandler(1, watch);
#else
    former = qInstallMessageHandler(watch);
    m_former = reinterpret_cast<void *>(former);
#endif
}

DebugLine::~DebugLine()
{
#ifdef Q_OS_WIN
    RemoveVectoredExceptionHandler(m_former);
#else
    qInstallMessageHandler(reinterpret_cast<QtMessageHandler>(m_former));
#endif
}

bool DebugLine::Came() const
{
    return came == 1;
}
