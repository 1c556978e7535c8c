#include "platform/linux/panels/FloatingWindow.h"

#include "platform/linux/X11Connection.h"

#include <QWindow>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace brenvale {

bool canFloatWindows() {
    return x11Connection() != nullptr;
}

bool hasCompositor() {
    auto* connection = x11Connection();
    if (connection == nullptr) {
        return false;
    }
    // The toolkit's windows are on the first screen, as good as always the only one.
    const auto selection = x11Atom(connection, "_NET_WM_CM_S0");
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr),
        std::free);
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void makeFloating(QWindow& window) {
    window.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                    Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint);
}

} // namespace brenvale
