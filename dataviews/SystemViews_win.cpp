#include "dataviews/SystemViews_p.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstdint>
#include <cwchar>

namespace Zel::SystemViews
{
void WriteDebugLine(const char *line)
{
    OutputDebugStringA(line);
}

void DeleteColumn(int windowHandle, int index)
{
    // Only 32 bits of a window handle are significant, whatever the size of HWND.
    const auto window = reinterpret_cast<HWND>(static_cast<std::intptr_t>(windowHandle));
    std::array<wchar_t, 32> name{};
    if (GetClassNameW(window, name.data(), static_cast<int>(name.size())) > 0 &&
        std::wcscmp(name.data(), L"SysListView32") == 0)
        SendMessageW(window, LVM_DELETECOLUMN, static_cast<WPARAM>(index), 0);
}
} // namespace Zel::SystemViews
