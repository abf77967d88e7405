// A host written without Qt: a plain X11 window with its own message loop. It loads the library, shows an
// allocation frame inside its window and prints the funds at the end.
//
//   x11host LIBRARY [SECONDS]
//
// The program ends when its window is closed, when the whole amount is allocated, or after that many seconds.
#include "../native-host/HostMain.h"
#include "../native-host/HostPage.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace
{
constexpr std::uint16_t width = 700, height = 360, margin = 20;

struct Freed {
    void operator()(void *memory) const noexcept { std::free(memory); }
};

xcb_atom_t atom(xcb_connection_t *x11, const char *name)
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> reply(
        xcb_intern_atom_reply(x11, xcb_intern_atom(x11, 0, length, name), nullptr));
    return reply ? reply->atom : 0;
}

xcb_window_t makeWindow(xcb_connection_t *x11, xcb_atom_t protocols, xcb_atom_t deleteWindow)
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(x11)).data;
    const xcb_window_t window = xcb_generate_id(x11);
    const std::uint32_t values[] = {0x00d8e0e8,
                                    XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(x11, XCB_COPY_FROM_PARENT, window, screen->root, 60, 40, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    constexpr char title[] = "A host with windows of its own";
    xcb_change_property(x11, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        sizeof title - 1, title);
    xcb_change_property(x11, XCB_PROP_MODE_REPLACE, window, protocols, XCB_ATOM_ATOM, 32, 1, &deleteWindow);
    xcb_map_window(x11, window);
    xcb_flush(x11);
    return window;
}

/// Runs the message loop; true on success.
bool run(xcb_connection_t *x11, xcb_window_t window, xcb_atom_t deleteWindow, HostPage &page, int seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        while (const std::unique_ptr<xcb_generic_event_t, Freed> event{xcb_poll_for_event(x11)}) {
            switch (event->response_type & 0x7f) {
            case XCB_CONFIGURE_NOTIFY: {
                const auto *size = reinterpret_cast<const xcb_configure_notify_event_t *>(event.get());
                if (size->window == window)
                    page.setBounds(margin, margin, size->width - 2 * margin, size->height - 2 * margin);
                break;
            }
            case XCB_FOCUS_IN:
                // The window manager gives the focus to top-level windows only, so the host passes it on.
                if (reinterpret_cast<const xcb_focus_in_event_t *>(event.get())->detail !=
                    XCB_NOTIFY_DETAIL_POINTER)
                    page.focus();
                break;
            case XCB_CLIENT_MESSAGE:
                if (reinterpret_cast<const xcb_client_message_event_t *>(event.get())->data.data32[0] ==
                    deleteWindow)
                    return true;
                break;
            default:
                break;
            }
        }
        page.processEvents(20);
        page.poll();
        if (page.isComplete())
            return true;
    }
    std::fprintf(stderr, "Nobody allocated everything in time\n");
    return false;
}

/// Shows a window with the frame inside; true on success.
bool serve(const Library &library, int seconds)
{
    xcb_connection_t *x11 = xcb_connect(nullptr, nullptr);
    xcb_window_t window = XCB_NONE;
    xcb_atom_t deleteWindow = XCB_ATOM_NONE;
    // Without a display, the package reports the error.
    if (xcb_connection_has_error(x11) == 0) {
        deleteWindow = atom(x11, "WM_DELETE_WINDOW");
        window = makeWindow(x11, atom(x11, "WM_PROTOCOLS"), deleteWindow);
        // Waits until the server has created the window, because the library looks for it on its own
        // connection.
        std::free(xcb_get_input_focus_reply(x11, xcb_get_input_focus(x11), nullptr));
    }
    HostPage page;
    bool good = page.open([&library](const char *name) { return library.find(name); }, window);
    if (good) {
        page.setBounds(margin, margin, width - 2 * margin, height - 2 * margin);
        good = run(x11, window, deleteWindow, page, seconds);
        page.printFunds();
        good = page.close() && good;
    }
    if (!page.error().empty())
        std::fprintf(stderr, "%s\n", page.error().c_str());
    xcb_disconnect(x11);
    return good;
}
} // namespace

int main(int argc, char **argv)
{
    return hostMain(argc, argv, "x11host", serve);
}
