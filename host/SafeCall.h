#pragma once

#include "data/Exceptions.h"
#include "export/zel_host_export.h"

#include <concepts>

/// The result of an operation called through a host interface: 0 or positive is success, negative is failure.
using HResult = qint32;
// Where Windows' own headers were read before, these are macros of theirs with the same values.
#ifndef S_OK
constexpr HResult S_OK = 0; ///< Success.
#endif
#ifndef E_FAIL
constexpr HResult E_FAIL = static_cast<HResult>(0x80004005); ///< Any failure with a message.
#endif
#ifndef E_UNEXPECTED
/// A failure that is no exception of a known kind.
constexpr HResult E_UNEXPECTED = static_cast<HResult>(0x8000FFFF);
#endif

/// Raised when a host interface answers with a failure result.
class ZEL_HOST_EXPORT ESafecallError : public Exception
{
public:
    ESafecallError(HResult result, const QString &message); ///< With the failure result it stands for.
    ~ESafecallError() override;
    HResult Result() const noexcept { return m_result; } ///< The failure result; always negative.

private:
    HResult m_result;
};

/// Keeps the message of the exception that is being handled for the caller that will raise the failure
/// result on the other side, and returns that result. One message is kept per thread, that of the last
/// failure. Call it inside a catch block only.
ZEL_HOST_EXPORT HResult SafecallFailure() noexcept;

/// Runs @p body; an exception leaving it becomes a failure result, never an exception.
template <typename Body> HResult SafecallGuard(Body &&body) noexcept
{
    try {
        body();
        return S_OK;
    } catch (...) {
        return SafecallFailure();
    }
}

/// Raises ESafecallError when @p result is a failure, with the message that SafecallFailure kept for that
/// result, or with the number when there is none. A message that was kept is forgotten, a success included:
/// it is raised once or not at all.
ZEL_HOST_EXPORT void SafecallCheck(HResult result);

/// Runs @p call, an operation of a host interface, and checks its result. What an earlier failure that nobody
/// asked about has said is forgotten first: an interface that answers with a bare number has no message.
template <std::invocable Call> void SafecallCheck(Call &&call)
{
    SafecallCheck(S_OK);
    SafecallCheck(static_cast<HResult>(call()));
}
