#include "package/NativeWindow_p.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
struct Freed {
    void operator()(void *reply) const noexcept { std::free(reply); }
};

// nullptr on a platform without an X server.
xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}
} // namespace

namespace Zel::NativeWindow
{
QString DefaultPlugin()
{
    return u"xcb"_s;
}

QString PluginFile(const QString &name)
{
    return u"libq%1.so"_s.arg(name);
}

QString OwnPluginFolder()
{
    return {};
}

bool Answers(const QString &plugin)
{
    if (plugin != DefaultPlugin())
        return true;
    xcb_connection_t *probe = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(probe) == 0;
    xcb_disconnect(probe);
    return answers;
}

bool Exists(quintptr window)
{
    xcb_connection_t *x11 = connection();
    // X11 window numbers have 32 bits.
    if (!x11 || window != static_cast<xcb_window_t>(window))
        return false;
    const auto cookie = xcb_get_window_attributes(x11, static_cast<xcb_window_t>(window));
    xcb_generic_error_t *error = nullptr;
    const std::unique_ptr<void, Freed> reply(xcb_get_window_attributes_reply(x11, cookie, &error));
    const std::unique_ptr<void, Freed> reason(error);
    return reply != nullptr;
}

void TakeKeyboard(QWindow *window)
{
    if (xcb_connection_t *x11 = connection()) {
        // The focus is set directly, because the window manager does not manage embedded windows.
        xcb_set_input_focus(x11, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(window->winId()),
                            XCB_CURRENT_TIME);
        xcb_flush(x11);
    }
}
} // namespace Zel::NativeWindow
