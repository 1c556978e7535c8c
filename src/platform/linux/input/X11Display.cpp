#include "platform/linux/input/X11Display.h"

#include "platform/linux/X11Connection.h"
#include "platform/linux/input/XcbReply.h"
#include "platform/linux/input/XcbXkb.h"

#include <algorithm>
#include <span>

#include <xcb/xtest.h>

namespace brenvale {

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

bool hasXtest(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_test_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const auto version =
        replyOf(xcb_test_get_version_reply, connection, xcb_test_get_version(connection, 2, 2));
    return version != nullptr;
}

/// The number of the first event of XKB; 0 where the server has none.
quint8 startXkb(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        return 0;
    }
    const auto answer =
        replyOf(xcb_xkb_use_extension_reply, connection, xcb_xkb_use_extension(connection, 1, 0));
    return answer && answer->supported != 0 ? extension->first_event : quint8{0};
}

} // namespace

std::unique_ptr<X11Display> X11Display::open() {
    std::unique_ptr<X11Display> display(new X11Display); // NOLINT: the constructor is private
    return display->connect() ? std::move(display) : nullptr;
}

bool X11Display::connect() {
    int number = 0;
    connection_.reset(connectToX11(&number));
    if (!isAlive() || !hasXtest(connection())) {
        return false;
    }
    firstXkbEvent_ = startXkb(connection());
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection()));
    for (; number > 0 && screens.rem > 1; --number) {
        xcb_screen_next(&screens);
    }
    if (firstXkbEvent_ == 0 || screens.rem == 0) {
        return false;
    }
    root_ = screens.data->root;
    protocolsAtom_ = x11Atom(connection(), "WM_PROTOCOLS");
    pingAtom_ = x11Atom(connection(), "_NET_WM_PING");
    selectEvents();
    flush();
    return isAlive();
}

void X11Display::selectEvents() const {
    // A program that has grabbed the server, such as a window manager while it moves a window, holds up all
    // others, but no hardware.
    xcb_test_grab_control(connection(), 1);
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t allParts = 0xff;
    xcb_xkb_select_events(connection(), coreKeyboard, events, 0, events, allParts, allParts, nullptr);
}

void X11Display::sendKey(quint8 keycode, bool isDown) const {
    xcb_test_fake_input(connection(), isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode, XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, 0);
}

void X11Display::sendMove(QPoint by) const {
    constexpr quint8 isRelative = 1;
    xcb_test_fake_input(connection(), XCB_MOTION_NOTIFY, isRelative, XCB_CURRENT_TIME, XCB_NONE,
                        static_cast<qint16>(by.x()), static_cast<qint16>(by.y()), 0);
}

void X11Display::sendButton(quint8 button, bool isDown) {
    if (isDown) { // the release is of the same button that was pressed
        readButtons();
    }
    xcb_test_fake_input(connection(), isDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE,
                        physicalButtons_.at(button), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

/// A left-handed user has the buttons swapped, and XTEST counts them before that.
void X11Display::readButtons() {
    readEvents();
    if (!std::exchange(haveButtonsChanged_, false)) {
        return;
    }
    const auto mapping =
        replyOf(xcb_get_pointer_mapping_reply, connection(), xcb_get_pointer_mapping(connection()));
    if (!mapping) {
        return;
    }
    const std::span<const quint8> logical(xcb_get_pointer_mapping_map(mapping.get()), mapping->map_len);
    for (std::size_t button = 1; button < physicalButtons_.size(); ++button) {
        const auto place = std::ranges::find(logical, button);
        physicalButtons_.at(button) = static_cast<quint8>(place != logical.end() ? place - logical.begin() + 1
                                                                                 : std::ptrdiff_t(button));
    }
}

void X11Display::lockGroup(int group) const {
    constexpr quint8 doLockGroup = 1;
    xcb_xkb_latch_lock_state(connection(), coreKeyboard, 0, 0, doLockGroup, static_cast<quint8>(group), 0, 0,
                             0);
}

std::optional<KeyboardState> X11Display::keyboardState() const {
    const auto state =
        replyOf(xcb_xkb_get_state_reply, connection(), xcb_xkb_get_state(connection(), coreKeyboard));
    if (!state) {
        return {};
    }
    return KeyboardState{.heldModifiers = state->baseMods,
                         .latchedModifiers = state->latchedMods,
                         .lockedModifiers = state->lockedMods,
                         .heldGroup = state->baseGroup,
                         .latchedGroup = state->latchedGroup,
                         .lockedGroup = state->lockedGroup,
                         .group = state->group};
}

void X11Display::readEvents() {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection())}) {
        handle(*event);
    }
}

void X11Display::handle(const xcb_generic_event_t& event) {
    constexpr quint8 withoutSentMark = 0x7f;
    const quint8 type = event.response_type & withoutSentMark;
    if (type == firstXkbEvent_) { // only those of the layout were asked for
        hasLayoutChanged_ = true;
    } else if (type == XCB_MAPPING_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_mapping_notify_event_t&>(event);
        haveButtonsChanged_ |= change.request == XCB_MAPPING_POINTER;
        hasLayoutChanged_ |= change.request != XCB_MAPPING_POINTER;
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == protocolsAtom_ && message.data.data32[0] == pingAtom_) {
            lastPong_ = message.data.data32[1];
        }
    }
}

bool X11Display::takeLayoutChange() {
    readEvents();
    return std::exchange(hasLayoutChanged_, false);
}

} // namespace brenvale
