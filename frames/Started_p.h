#pragma once

#include <QtGlobal>

/// Whether the package was started. The flag is in this module because frames/ may not include package/.
namespace Zel::Started
{
/// Called by the package's start-up and shut-down.
void Set(bool started) noexcept;

/// Called by the constructor of every frame and form. Throws Exception while the package is not started,
/// because the frame would work only partly.
void Want();

/// During its lifetime, this thread can create frames without Initialize. For tools that inspect the classes
/// without starting the package, such as a form designer.
class ForTools
{
public:
    ForTools() noexcept;
    ~ForTools();
    Q_DISABLE_COPY_MOVE(ForTools)
};
} // namespace Zel::Started
