// A host written without Qt: a plain Win32 window with its own message loop. It loads the library, shows an
// allocation frame inside its window and prints the funds at the end.
//
//   win32host LIBRARY [SECONDS]
//
// The program ends when its window is closed, when the whole amount is allocated, or after that many seconds.
#include "../native-host/HostMain.h"
#include "../native-host/HostPage.h"

#include <windows.h>

#include <cstdio>

namespace
{
constexpr int margin = 20, headerHeight = 24;
constexpr UINT_PTR pollTimer = 1, endTimer = 2;

/// The data of the window procedure.
struct Host {
    HostPage page;
    HWND header = nullptr;
    bool timedOut = false;
};

Host *hostOf(HWND window)
{
    return reinterpret_cast<Host *>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void layOut(HWND window, Host &host)
{
    RECT area{};
    GetClientRect(window, &area);
    const int width = area.right - 2 * margin;
    MoveWindow(host.header, margin, margin, width, headerHeight, TRUE);
    host.page.setBounds(margin, margin + headerHeight, width, area.bottom - 2 * margin - headerHeight);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    Host *host = hostOf(window);
    if (!host)
        return DefWindowProcW(window, message, wparam, lparam);
    switch (message) {
    case WM_SIZE:
        layOut(window, *host);
        return 0;
    case WM_SETFOCUS:
        host->page.focus();
        return 0;
    case WM_TIMER:
        host->page.poll();
        host->timedOut = wparam == endTimer;
        if (host->timedOut || host->page.isComplete())
            PostQuitMessage(0);
        return 0;
    case WM_CLOSE:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, message, wparam, lparam);
    }
}

HWND makeWindow(Host &host)
{
    WNDCLASSW description{};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursor(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = L"HostWindow";
    RegisterClassW(&description);
    const HWND window = CreateWindowExW(0, description.lpszClassName, L"A host with windows of its own",
                                        WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 60, 40, 720, 420, nullptr,
                                        nullptr, description.hInstance, nullptr);
    if (window)
        host.header = CreateWindowExW(0, L"STATIC", L"The system's own label above a frame of the package:",
                                      WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window, nullptr,
                                      description.hInstance, nullptr);
    return window;
}

/// Shows a window with the frame inside; true on success.
bool serve(const Library &library, int seconds)
{
    Host host;
    // Without a desktop, window is null and the package reports the error.
    const HWND window = makeWindow(host);
    bool good = host.page.open([&library](const char *name) { return library.find(name); },
                               reinterpret_cast<std::uintptr_t>(window));
    if (good) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&host));
        layOut(window, host);
        ShowWindow(window, SW_SHOWNORMAL);
        host.page.focus();
        SetTimer(window, pollTimer, 50, nullptr);
        SetTimer(window, endTimer, static_cast<UINT>(seconds) * 1000, nullptr);
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (host.timedOut)
            std::fprintf(stderr, "Nobody allocated everything in time\n");
        host.page.printFunds();
        good = host.page.close() && !host.timedOut;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    if (window)
        DestroyWindow(window);
    if (!host.page.error().empty())
        std::fprintf(stderr, "%s\n", host.page.error().c_str());
    return good;
}
} // namespace

int main(int argc, char **argv)
{
    return hostMain(argc, argv, "win32host", serve);
}
