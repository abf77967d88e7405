#pragma once

#include <QtGlobal>

/// Whether the package was started. Kept where the frames are: they stand below the package's entry points.
namespace Zel::Started
{
/// Told by the package's start-up and shut-down.
void Set(bool started) noexcept;

/// Asked by every frame and form as it is made. Raises Exception while the package is not started: the frame
/// would work in part only.
void Want();

/// While it lives, this thread makes frames whether the package was started or not. For tools that look at
/// the classes without running the package, such as a form designer.
class ForTools
{
public:
    ForTools() noexcept;
    ~ForTools();
    Q_DISABLE_COPY_MOVE(ForTools)
};
} // namespace Zel::Started
