#include "platform/linux/WindowActivation.h"

#include "platform/linux/X11Connection.h"

#include <QWindow>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

/// Asks the window manager as the user would (Extended Window Manager Hints, _NET_ACTIVE_WINDOW).
void requestActiveWindow(xcb_connection_t* connection, xcb_window_t window) {
    constexpr std::uint32_t askedByTheUser = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = x11Atom(connection, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = askedByTheUser;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0;
         xcb_screen_next(&screens)) {
        xcb_send_event(connection, 0, screens.data->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message)); // NOLINT: the protocol's own way
    }
    xcb_flush(connection);
}

} // namespace

void activateWindowForUser(QWindow& window) {
    window.raise();
    window.requestActivate(); // on Wayland by the token of the environment, where the desktop gave one
    if (auto* connection = x11Connection()) {
        requestActiveWindow(connection, static_cast<xcb_window_t>(window.winId()));
    }
}

} // namespace brenvale
