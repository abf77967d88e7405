#pragma once

class QByteArray;

/// The window system's own messages; one body for each system.
namespace Zel::WindowMessages
{
/// The number of a window message as a widget's nativeEvent gets it; 0 where messages have no numbers.
int NumberOf(const QByteArray &eventType, const void *message);
} // namespace Zel::WindowMessages
