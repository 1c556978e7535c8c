#include "platform/linux/X11Connection.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <span>

namespace brenvale {

xcb_connection_t* x11Connection() {
    // The platform without a display says that it has the interface too.
    if (QGuiApplication::platformName() != u"xcb") {
        return nullptr;
    }
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_connection_t* connectToX11(int* screen) {
    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);
    return xcb_connect(nullptr, screen);
}

xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> x11Cardinals(xcb_connection_t* connection, xcb_window_t window,
                                        xcb_atom_t property, std::uint32_t most) {
    constexpr int wordSize = 32;
    const auto cookie = xcb_get_property(connection, 0, window, property, XCB_ATOM_CARDINAL, 0, most);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection, cookie, nullptr), std::free);
    if (!reply || reply->format != wordSize) {
        return {};
    }
    const std::span numbers(static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
                            reply->value_len);
    return {numbers.begin(), numbers.end()};
}

} // namespace brenvale
