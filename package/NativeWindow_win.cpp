#include "package/NativeWindow_p.h"

#include <QFileInfo>
#include <QWindow>

#include <windows.h>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
HWND handleOf(quintptr window)
{
    return reinterpret_cast<HWND>(window);
}
} // namespace

namespace Zel::NativeWindow
{
QString DefaultPlugin()
{
    return u"windows"_s;
}

QString PluginFile(const QString &name)
{
    return u"q%1.dll"_s.arg(name);
}

QString OwnPluginFolder()
{
    HMODULE module = nullptr;
    std::array<wchar_t, 4096> path;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&OwnPluginFolder), &module))
        return {};
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length == path.size())
        return {};
    return QFileInfo(QString::fromWCharArray(path.data(), static_cast<int>(length))).absolutePath();
}

bool Answers(const QString &plugin)
{
    if (plugin != DefaultPlugin())
        return true;
    // A service without a desktop cannot create a window.
    const HWND probe =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (probe)
        DestroyWindow(probe);
    return probe != nullptr;
}

bool Exists(quintptr window)
{
    return IsWindow(handleOf(window)) != FALSE;
}

void TakeKeyboard(QWindow *window)
{
    SetFocus(handleOf(window->winId()));
}
} // namespace Zel::NativeWindow
