#include "platform/linux/TrayColor.h"

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/X11Connection.h"

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

/// A tray of the old kind may tell the colours of its panel (_NET_SYSTEM_TRAY_COLORS of the System Tray
/// Protocol): four of red, green and blue each, that of texts first.
std::optional<QColor> colorOfOldTray(xcb_connection_t* connection) {
    const auto selection = x11Atom(connection, "_NET_SYSTEM_TRAY_S0");
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> tray(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr),
        std::free);
    if (!tray || tray->owner == XCB_WINDOW_NONE) {
        return {};
    }
    constexpr std::uint32_t components = 3;
    const auto property = x11Atom(connection, "_NET_SYSTEM_TRAY_COLORS");
    const auto values = x11Cardinals(connection, tray->owner, property, components);
    if (values.size() < components) {
        return {};
    }
    const auto component = [&values](std::size_t number) {
        return static_cast<quint16>(values[number]);
    };
    return QColor::fromRgba64(component(0), component(1), component(2));
}

} // namespace

std::optional<QColor> trayColor() {
    if (currentDesktop().contains(QStringLiteral("GNOME"))) {
        return QColor(Qt::white); // its bar is dark whatever the applications are
    }
    auto* connection = x11Connection();
    return connection != nullptr ? colorOfOldTray(connection) : std::nullopt;
}

} // namespace brenvale
