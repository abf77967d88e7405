#pragma once

#include "toolkit/TApplication.h"

#include <QStringList>
#include <QTest>

/// Collects what reaches the application's exception report while it lives.
class ReportCatcher
{
public:
    ReportCatcher()
    {
        m_former = SetExceptionReport([this](const QString &message) { messages.append(message); });
    }
    ~ReportCatcher() { SetExceptionReport(m_former); }
    ReportCatcher(const ReportCatcher &) = delete;
    ReportCatcher &operator=(const ReportCatcher &) = delete;
    QStringList messages;

private:
    TExceptionReport m_former;
};

/// Shows a window and waits until it is painted and has the focus; false when that does not come about.
inline bool showActive(QWidget &window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowExposed(&window) && QTest::qWaitForWindowActive(&window);
}
