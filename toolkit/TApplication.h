#pragma once

#include "data/Exceptions.h"
#include "export/zel_toolkit_export.h"

#include <QApplication>

#include <concepts>
#include <functional>
#include <type_traits>
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

/// A functor that runs in GuardedCall. It takes as many arguments as the functor in it.
template <typename Functor> class TGuardedFunctor
{
public:
    explicit TGuardedFunctor(Functor functor) : m_functor(std::move(functor)) {} ///< Guards @p functor.
    /// Runs the functor and reports what leaves it.
    template <typename... Arguments>
    requires std::invocable<Functor &, Arguments...>
    void operator()(Arguments &&...arguments)
    {
        GuardedCall([&] { std::invoke(m_functor, std::forward<Arguments>(arguments)...); });
    }

private:
    Functor m_functor;
};

/// As QObject::connect, but @p slot, a functor or a member function of @p receiver, runs in GuardedCall. The
/// way to connect to everything that can raise. The connection goes with @p sender and @p receiver.
template <typename Sender, typename Signal, typename Receiver, typename Slot>
QMetaObject::Connection connectGuarded(Sender *sender, Signal signal, Receiver *receiver, Slot slot,
                                       Qt::ConnectionType type = Qt::AutoConnection)
{
    if constexpr (std::is_member_function_pointer_v<Slot>)
        return QObject::connect(sender, signal, receiver, TGuardedFunctor(std::bind_front(slot, receiver)),
                                type);
    else
        return QObject::connect(sender, signal, receiver, TGuardedFunctor(std::move(slot)), type);
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
