#pragma once

#include "data/Exceptions.h"
#include "export/zel_toolkit_export.h"

#include <QApplication>

#include <functional>
#include <utility>

/// Receives each exception that reached the message loop, as one message in plain words.
using TExceptionReport = std::function<void(const QString &message)>;

/// Replaces the application's exception report and returns the former one. The standard report, in force at
/// the start and after setting an empty one, logs the message and shows it in a box that does not block.
ZEL_TOOLKIT_EXPORT TExceptionReport SetExceptionReport(TExceptionReport report);

/// Hands the exception being handled to the application's report. Call it inside a catch block only.
ZEL_TOOLKIT_EXPORT void ReportException() noexcept;

/// Runs @p body and reports what leaves it: the toolkit's signal machinery must never see an exception, so
/// every slot and event handler that can raise runs its work in here. True when nothing was raised.
template <typename Body> bool GuardedCall(Body &&body) noexcept
{
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        ReportException();
        return false;
    }
}

/// The application object of a host: as QApplication, and an exception that leaves an event handler is
/// reported instead of ending the program. A host may use its own QApplication; the frames guard themselves.
class ZEL_TOOLKIT_EXPORT TApplication : public QApplication
{
    Q_OBJECT
public:
    TApplication(int &argc, char **argv); ///< As QApplication's: both must outlive it.
    ~TApplication() override;
    bool notify(QObject *receiver, QEvent *event) override;
};
