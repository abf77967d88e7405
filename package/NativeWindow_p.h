#pragma once

#include <QString>

class QWindow;

/// What the C interface asks of the window system itself; one body for each system.
namespace Zel::NativeWindow
{
/// The window system's plugin that an application takes when nobody asks for another one.
QString DefaultPlugin();
/// The file name of the plugin of that name.
QString PluginFile(const QString &name);
/// A folder of plugins that belongs to this library; empty where the system has one place for all.
QString OwnPluginFolder();
/// Whether the window system behind the plugin answers. Asked before there is an application object.
bool Answers(const QString &plugin);
/// Whether the system knows a window of that number. Asked with an application object.
bool Exists(quintptr window);
/// Gives a window that stands in one of the host's the keyboard.
void TakeKeyboard(QWindow *window);
} // namespace Zel::NativeWindow
