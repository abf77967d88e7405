#pragma once

#include "data/Exceptions.h"
#include "export/zel_host_export.h"

#include <concepts>

/// The result of an operation called through a host interface: 0 or positive is success, negative is failure.
using HResult = qint32;
// Windows' own headers, when included before this one, define these names as macros with the same values.
#ifndef S_OK
constexpr HResult S_OK = 0; ///< Success.
#endif
#ifndef E_FAIL
constexpr HResult E_FAIL = static_cast<HResult>(0x80004005); ///< Any failure with a message.
#endif
#ifndef E_UNEXPECTED
/// A failure by an exception of an unknown type.
constexpr HResult E_UNEXPECTED = static_cast<HResult>(0x8000FFFF);
#endif

/// Thrown when a host interface returns a failure result.
class ZEL_HOST_EXPORT ESafecallError : public Exception
{
public:
    ESafecallError(HResult result, const QString &message); ///< @p result is the failure result, negative.
    ~ESafecallError() override;
    HResult Result() const noexcept { return m_result; } ///< The failure result; always negative.

private:
    HResult m_result;
};

/// Stores the message of the exception being handled, for the SafecallCheck of the interface's caller, and
/// returns the failure result. Each thread stores one message, that of the last failure. Call this inside a
/// catch block only.
ZEL_HOST_EXPORT HResult SafecallFailure() noexcept;

/// Runs @p body and turns an exception into a failure result.
template <typename Body> HResult SafecallGuard(Body &&body) noexcept
{
    try {
        body();
        return S_OK;
    } catch (...) {
        return SafecallFailure();
    }
}

/// Throws ESafecallError when @p result is a failure, with the message that SafecallFailure stored for that
/// result, or with the number when there is none. Every call discards the stored message, even for a success,
/// so a message is thrown at most once.
ZEL_HOST_EXPORT void SafecallCheck(HResult result);

/// Runs @p call, an operation of a host interface, and checks its result. Discards the message of an earlier
/// failure first, because an interface that only returns a number stores no message of its own.
template <std::invocable Call> void SafecallCheck(Call &&call)
{
    SafecallCheck(S_OK);
    SafecallCheck(static_cast<HResult>(call()));
}
