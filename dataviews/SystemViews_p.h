#pragma once

/// What the view helpers ask of the window system itself; one body for each system.
namespace Zel::SystemViews
{
/// Writes a line for a debugger to see.
void WriteDebugLine(const char *line);
/// Sends a list view of the system's own the message that deletes a column; nothing for any other handle.
void DeleteColumn(int windowHandle, int index);
} // namespace Zel::SystemViews
