#pragma once

#include <QByteArray>

/// Watches for a line of debug output while it lives, where the system writes such lines: in the toolkit's
/// log, or on Windows in the system's own debug output. The line watched for does not reach the log.
class DebugLine
{
public:
    explicit DebugLine(const char *line);
    ~DebugLine();
    DebugLine(const DebugLine &) = delete;
    DebugLine &operator=(const DebugLine &) = delete;
    /// Whether exactly one such line has come.
    bool Came() const;

private:
    void *m_former;
};
