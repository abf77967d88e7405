#pragma once

#include <QString>

class QWindow;

/// The calls of the C interface to the window system; one implementation for each system.
namespace Zel::NativeWindow
{
/// The platform plugin that an application uses by default.
QString DefaultPlugin();
/// The file name of the plugin of that name.
QString PluginFile(const QString &name);
/// The folder of this library, which also has plugins; empty where the system has a common plugin folder.
QString OwnPluginFolder();
/// Whether the plugin's window system can open a window. Called before there is an application object.
bool Answers(const QString &plugin);
/// Whether there is a window of that number. Needs an application object.
bool Exists(quintptr window);
/// Gives the keyboard focus to a window that is embedded in a host's window.
void TakeKeyboard(QWindow *window);
} // namespace Zel::NativeWindow
