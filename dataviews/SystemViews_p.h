#pragma once

/// The calls of the view helpers to the window system; one implementation for each system.
namespace Zel::SystemViews
{
/// Writes a line to the debug output.
void WriteDebugLine(const char *line);
/// Deletes a column of a native list view; does nothing for another window.
void DeleteColumn(int windowHandle, int index);
} // namespace Zel::SystemViews
