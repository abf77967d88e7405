#pragma once

#include "data/Exceptions.h"
#include "export/zel_toolkit_export.h"

#include <QApplication>

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

/// Receives the message of each exception that reached the message loop.
using TExceptionReport = std::function<void(const QString &message)>;

/// Replaces the application's exception report and returns the former one. The standard report logs the
/// message and shows it in a non-blocking box. It is active initially and after setting an empty report.
ZEL_TOOLKIT_EXPORT TExceptionReport SetExceptionReport(TExceptionReport report);

/// Passes the exception being handled to the application's report. Call it inside a catch block only.
ZEL_TOOLKIT_EXPORT void ReportException() noexcept;

/// Runs @p body and reports its exception; returns false then. Every slot and event handler that can throw
/// uses this function, because an exception must not reach Qt's signal code.
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

/// A functor that runs another functor in GuardedCall, with the same arguments.
template <typename Functor> class TGuardedFunctor
{
public:
    explicit TGuardedFunctor(Functor functor) : m_functor(std::move(functor)) {} ///< Wraps @p functor.
    /// Runs the functor and reports its exception.
    template <typename... Arguments>
    requires std::invocable<Functor &, Arguments...>
    void operator()(Arguments &&...arguments)
    {
        GuardedCall([&] { std::invoke(m_functor, std::forward<Arguments>(arguments)...); });
    }

private:
    Functor m_functor;
};

/// Like QObject::connect, but runs @p slot, a functor or a member function of @p receiver, in GuardedCall.
/// Use it for every slot that can throw. The connection ends when @p sender or @p receiver is destroyed.
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

/// A QApplication that reports an exception of an event handler instead of ending the program. A host may use
/// a plain QApplication, because the frames catch the exceptions of their own handlers.
class ZEL_TOOLKIT_EXPORT TApplication : public QApplication
{
    Q_OBJECT
public:
    TApplication(int &argc, char **argv); ///< Like QApplication's; both arguments must outlive the object.
    ~TApplication() override;
    bool notify(QObject *receiver, QEvent *event) override;
};
