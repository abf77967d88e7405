#pragma once

#include <QByteArray>

/// Counts a line of debug output during its lifetime. It listens where the system writes such lines: in Qt's
/// log, or on Windows in the system's debug output. The awaited line does not reach the log.
class DebugLine
{
public:
    explicit DebugLine(const char *line);
    ~DebugLine();
    DebugLine(const DebugLine &) = delete;
    DebugLine &operator=(const DebugLine &) = delete;
    /// Whether the line was written exactly once.
    bool Came() const;

private:
    void *m_former;
};
