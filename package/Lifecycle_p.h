#pragma once

#include "package/ZelCommonFramesC.h"

/// What the package's start and stop have to ask the C interface.
namespace Zel::Lifecycle
{
/// Keeps @p reason for ZelLastError and answers with @p result.
ZelResult Refuse(ZelResult result, const char *reason) noexcept;
/// Whether there is an application object on another thread than this one.
bool OnAnotherThread() noexcept;
/// Whether the interface is serving the message loop: the caller runs inside it.
bool Serving() noexcept;
/// The class of a frame or form of the package, or of one derived from it, that has not been destroyed,
/// whoever made it; nullptr when there is none. A frame that the interface handed out counts until it is
/// given back.
const char *FrameAlive() noexcept;
/// Gives back all that the interface keeps, an application object of its own included.
void Close() noexcept;
} // namespace Zel::Lifecycle
