#include "platform/linux/DisplayProbe.h"

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/X11Connection.h"

#include <QByteArrayList>
#include <QtGlobal>

#include <chrono>
#include <cstdarg>
#include <cstdlib>
#include <future>
#include <memory>
#include <string_view>
#include <thread>

#include <wayland-client.h>
#include <xcb/xcb.h>

namespace brenvale {

namespace {

constexpr auto platformVariable = "QT_QPA_PLATFORM";
constexpr std::chrono::seconds patience{3};

/// What a display server said when it was asked.
struct Answer {
    bool isAlive = false;
    bool takesEvents = false;
    bool hasLayerShell = false;
};

void discard(const char* /*format*/, va_list /*arguments*/) {}

/// What a compositor offers to programs like us.
struct Services {
    bool hasKeyboard = false;
    bool hasPointer = false;
    bool hasLayerShell = false;
};

void globalAnnounced(void* data, wl_registry* /*registry*/, std::uint32_t /*name*/, const char* interface,
                     std::uint32_t /*version*/) {
    auto& services = *static_cast<Services*>(data);
    services.hasKeyboard |= std::string_view(interface) == "zwp_virtual_keyboard_manager_v1";
    services.hasPointer |= std::string_view(interface) == "zwlr_virtual_pointer_manager_v1";
    services.hasLayerShell |= std::string_view(interface) == "zwlr_layer_shell_v1";
}

void globalRemoved(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

/// A compositor of another login of the same user is none of ours.
bool isWaylandSession() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

Answer askWayland() {
    if (!qEnvironmentVariableIsEmpty("WAYLAND_SOCKET")) {
        return {.isAlive = true}; // a connection that somebody made for us, good for one use
    }
    if (!isWaylandSession()) {
        return {};
    }
    wl_log_set_handler_client(discard); // that there is no Wayland is nothing to complain about
    auto* display = wl_display_connect(nullptr);
    if (display == nullptr) {
        return {};
    }
    static constexpr wl_registry_listener listener{.global = globalAnnounced, .global_remove = globalRemoved};
    Services services;
    auto* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, &services);
    const bool isAlive = wl_display_roundtrip(display) >= 0;
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
    return {.isAlive = isAlive,
            .takesEvents = services.hasKeyboard && services.hasPointer,
            .hasLayerShell = services.hasLayerShell};
}

Answer askX11() {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        return {};
    }
    auto* connection = connectToX11();
    Answer answer{.isAlive = xcb_connection_has_error(connection) == 0};
    if (answer.isAlive) {
        constexpr std::string_view extension = "XTEST";
        const auto cookie = xcb_query_extension(connection, extension.size(), extension.data());
        const std::unique_ptr<xcb_query_extension_reply_t, decltype(&std::free)> reply(
            xcb_query_extension_reply(connection, cookie, nullptr), std::free);
        answer.takesEvents = reply && reply->present != 0;
    }
    xcb_disconnect(connection);
    return answer;
}

/// The answer of a thread of its own, which stays behind where the server takes the connection and then says
/// nothing: such a server must not keep the program from starting.
Answer answerInTime(Answer (*ask)()) {
    std::promise<Answer> promise;
    auto answer = promise.get_future();
    std::thread([promise = std::move(promise), ask]() mutable { promise.set_value(ask()); }).detach();
    return answer.wait_for(patience) == std::future_status::ready ? answer.get() : Answer{};
}

} // namespace

Display chooseDisplay() {
    const auto chosen = qgetenv(platformVariable);
    auto platforms = chosen.split(';');
    // GNOME lets only X11 programs set the clipboard and float above others without the focus.
    const bool isGnome = currentDesktop().contains(QStringLiteral("GNOME"), Qt::CaseInsensitive);
    platforms << (isGnome ? QByteArrayList{"xcb", "wayland"} : QByteArrayList{"wayland", "xcb"})
              << "offscreen";
    const auto wayland = answerInTime(askWayland);
    const auto x11 = answerInTime(askX11);
    platforms.removeIf([&wayland, &x11](const QByteArray& platform) {
        return platform.isEmpty() || (platform.startsWith("wayland") && !wayland.isAlive) ||
               (platform.startsWith("xcb") && !x11.isAlive);
    });
    qputenv(platformVariable, platforms.join(';'));
    if (wayland.isAlive) { // its X11 display reaches X11 programs alone
        return {.kind = Display::Kind::wayland,
                .takesEvents = wayland.takesEvents,
                .hasLayerShell = wayland.hasLayerShell,
                .userChoice = chosen};
    }
    return {.kind = x11.isAlive ? Display::Kind::x11 : Display::Kind::none,
            .takesEvents = x11.takesEvents,
            .userChoice = chosen};
}

void restoreEnvironment(const Display& display) {
    if (display.userChoice.isEmpty()) {
        qunsetenv(platformVariable);
    } else {
        qputenv(platformVariable, display.userChoice);
    }
}

} // namespace brenvale
