#pragma once

#include "package/ZelCommonFramesC.h"

/// What the package's start and stop have to ask the C interface.
namespace Zel::Lifecycle
{
/// Keeps @p reason for ZelLastError and answers with @p result.
ZelResult Refuse(ZelResult result, const char *reason) noexcept;
/// Whether this is not the thread that the interface is used on.
bool OnAnotherThread() noexcept;
/// Whether the interface is serving the message loop: the caller runs inside it.
bool Serving() noexcept;
/// Whether a frame that the interface handed out has not been destroyed, or a dialog is still open.
bool FramesAlive() noexcept;
/// Gives back all that the interface keeps, an application object of its own included.
void Close() noexcept;
} // namespace Zel::Lifecycle
