#pragma once

class QByteArray;

/// Native window messages; one implementation for each system.
namespace Zel::WindowMessages
{
/// The number of the window message passed to a widget's nativeEvent; 0 on systems without message numbers.
int NumberOf(const QByteArray &eventType, const void *message);
} // namespace Zel::WindowMessages
