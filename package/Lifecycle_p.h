#pragma once

#include "package/ZelCommonFramesC.h"

/// The functions of the C interface that Initialize and Finalize need.
namespace Zel::Lifecycle
{
/// Stores @p reason for ZelLastError and returns @p result.
ZelResult Refuse(ZelResult result, const char *reason) noexcept;
/// Whether the application object belongs to another thread.
bool OnAnotherThread() noexcept;
/// Whether ZelProcessEvents is running, so that the caller runs inside it.
bool Serving() noexcept;
/// The class of a living frame or form of the package, including derived classes and frames created in C++;
/// nullptr when there is none. A frame of the C interface counts until ZelFrameDestroy.
const char *FrameAlive() noexcept;
/// Frees everything that the C interface holds, including the application object that it created.
void Close() noexcept;
} // namespace Zel::Lifecycle
