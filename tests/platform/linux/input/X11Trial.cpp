#include "X11Trial.h"

#include "platform/linux/X11Connection.h"
#include "platform/linux/input/XcbReply.h"
#include "platform/linux/input/XcbXkb.h"

#include <QPoint>
#include <QStandardPaths>

#include <array>
#include <csignal>
#include <utility>

#include <poll.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace brenvale {

namespace {

constexpr std::uint16_t width = 1280;
constexpr std::uint16_t height = 800;
constexpr std::uint8_t leftButton = 1;
constexpr std::uint8_t rightButton = 3;

} // namespace

TestXServer::TestXServer() : displayBefore_(qgetenv("DISPLAY")) {
    if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()) {
        return;
    }
    Announcement number;
    program_.emplace(QStringLiteral("Xvfb"),
                     QStringList{QStringLiteral("-screen"), QStringLiteral("0"),
                                 QStringLiteral("%1x%2x24").arg(width).arg(height),
                                 QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                                 QStringLiteral("-noreset"), QStringLiteral("-displayfd"),
                                 QString::number(number.descriptor())});
    if (const auto display = number.wait(); !display.isEmpty()) {
        qputenv("DISPLAY", ':' + display);
        isThere_ = true;
    }
}

TestXServer::~TestXServer() {
    program_.reset();
    qputenv("DISPLAY", displayBefore_);
}

void TestXServer::stop() {
    program_->signal(SIGSTOP);
}

void TestXServer::goOn() {
    program_->signal(SIGCONT);
}

QString TestXServer::run(const QString& program, const QStringList& arguments) {
    return TestProgram(program, arguments).output();
}

/// The connection of the witness, which its thread alone uses once it runs.
class X11Witness::Window {
public:
    Window();
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void readLayout();
    [[nodiscard]] quint32 keysymOf(const xcb_key_press_event_t& event) const;
    /// The modifiers on the last key.
    [[nodiscard]] QString held() const { return heldModifiers(state_); }
    void answer(const xcb_client_message_event_t& message) const;

    xcb_connection_t* connection = nullptr;
    xcb_window_t window = 0;
    xcb_window_t root = 0;
    quint8 firstXkbEvent = 0;
    QPoint place;

private:
    void show();

    xkb_context* context_ = nullptr;
    xkb_keymap* keymap_ = nullptr;
    xkb_state* state_ = nullptr;
    xcb_atom_t protocols_ = 0;
    xcb_atom_t ping_ = 0;
};

X11Witness::Window::Window() : context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)) {
    connection = connectToX11();
    xkb_x11_setup_xkb_extension(connection, 1, 0, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
                                &firstXkbEvent, nullptr);
    root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    protocols_ = x11Atom(connection, "WM_PROTOCOLS");
    ping_ = x11Atom(connection, "_NET_WM_PING");
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, 0xff, 0xff, nullptr);
    show();
    readLayout();
}

void X11Witness::Window::show() {
    window = xcb_generate_id(connection);
    const std::array<quint32, 2> values{1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                               XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                               XCB_EVENT_MASK_POINTER_MOTION};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, protocols_, XCB_ATOM_ATOM, 32, 1, &ping_);
    xcb_map_window(connection, window);
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    const auto pointer = replyOf(xcb_query_pointer_reply, connection, xcb_query_pointer(connection, root));
    place = QPoint(pointer->root_x, pointer->root_y);
}

X11Witness::Window::~Window() {
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    xkb_context_unref(context_);
    xcb_disconnect(connection);
}

void X11Witness::Window::readLayout() {
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    keymap_ = xkb_x11_keymap_new_from_device(
        context_, connection, xkb_x11_get_core_keyboard_device_id(connection), XKB_KEYMAP_COMPILE_NO_FLAGS);
    state_ = keymap_ != nullptr ? xkb_state_new(keymap_) : nullptr;
}

quint32 X11Witness::Window::keysymOf(const xcb_key_press_event_t& event) const {
    constexpr unsigned modifiers = 0xff;
    constexpr unsigned groupShift = 13;
    constexpr unsigned groups = 3;
    xkb_state_update_mask(state_, event.state & modifiers, 0, 0, 0, 0, (event.state >> groupShift) & groups);
    return xkb_state_key_get_one_sym(state_, event.detail);
}

void X11Witness::Window::answer(const xcb_client_message_event_t& message) const {
    if (message.type == protocols_ && message.data.data32[0] == ping_) {
        auto reply = message;
        reply.response_type = XCB_CLIENT_MESSAGE;
        reply.window = root;
        xcb_send_event(connection, 0, root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&reply));
        xcb_flush(connection);
    }
}

X11Witness::X11Witness()
    : window_(std::make_unique<Window>()), thread_([this](const std::stop_token& stop) { run(stop); }) {}

X11Witness::~X11Witness() {
    thread_.request_stop();
    thread_.join();
}

void X11Witness::run(const std::stop_token& stop) {
    while (!stop.stop_requested() && xcb_connection_has_error(window_->connection) == 0) {
        const XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(window_->connection));
        if (!event) {
            pollfd more{.fd = xcb_get_file_descriptor(window_->connection), .events = POLLIN, .revents = 0};
            ::poll(&more, 1, 20);
            continue;
        }
        const quint8 type = event->response_type & 0x7f;
        if (type == window_->firstXkbEvent) {
            window_->readLayout();
        } else if (type == XCB_CLIENT_MESSAGE) {
            window_->answer(reinterpret_cast<const xcb_client_message_event_t&>(*event));
        } else if (type == XCB_MOTION_NOTIFY) {
            const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(*event);
            const QPoint place(motion.root_x, motion.root_y);
            seen_.move(place - std::exchange(window_->place, place));
        } else if (type == XCB_BUTTON_PRESS || type == XCB_BUTTON_RELEASE) {
            const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            if (button.detail == leftButton || button.detail == rightButton) {
                seen_.button(button.detail == rightButton, type == XCB_BUTTON_PRESS);
            } else {
                seen_.add(QStringLiteral("another button"));
            }
        } else if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
            const auto keysym = window_->keysymOf(key);
            if (seen_.namedKey(keysym, type == XCB_KEY_PRESS, window_->held())) {
                continue;
            }
            // Whatever modifiers are on it: what is typed into a user's shortcut is to be seen as text.
            if (const char32_t character = xkb_keysym_to_utf32(keysym);
                type == XCB_KEY_PRESS && character != 0) {
                seen_.text(QString::fromUcs4(&character, 1));
            }
        }
    }
}

} // namespace brenvale
