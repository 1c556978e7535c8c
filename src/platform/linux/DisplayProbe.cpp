#include "platform/linux/DisplayProbe.h"

#include <QByteArrayList>
#include <QtGlobal>

#include <cstdarg>

#include <wayland-client-core.h>
#include <xcb/xcb.h>

namespace brenvale {

namespace {

constexpr auto platformVariable = "QT_QPA_PLATFORM";

void discard(const char* /*format*/, va_list /*arguments*/) {}

bool waylandAnswers() {
    wl_log_set_handler_client(discard); // that there is no Wayland is nothing to complain about
    auto* display = wl_display_connect(nullptr);
    if (display == nullptr) {
        return false;
    }
    wl_display_disconnect(display);
    return true;
}

bool x11Answers() {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        return false;
    }
    auto* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

} // namespace

void chooseDisplay() {
    QByteArrayList platforms = qgetenv(platformVariable).split(';');
    platforms << "wayland" << "xcb" << "offscreen";
    const bool hasWayland = waylandAnswers();
    const bool hasX11 = x11Answers();
    platforms.removeIf([hasWayland, hasX11](const QByteArray& platform) {
        return platform.isEmpty() || (platform.startsWith("wayland") && !hasWayland) ||
               (platform.startsWith("xcb") && !hasX11);
    });
    qputenv(platformVariable, platforms.join(';'));
}

} // namespace brenvale
