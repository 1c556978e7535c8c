#pragma once

#include <QPoint>

#include <array>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

namespace brenvale {

/// Which modifiers and which group of the layout the keyboard is in: held by keys, for one key only, for
/// good.
struct KeyboardState {
    quint32 heldModifiers = 0;
    quint32 latchedModifiers = 0;
    quint32 lockedModifiers = 0;
    int heldGroup = 0;
    int latchedGroup = 0;
    int lockedGroup = 0;
    int group = 0; ///< what the three make together

    [[nodiscard]] quint32 modifiers() const { return heldModifiers | latchedModifiers | lockedModifiers; }
};

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// An own connection to the X server by which keys and pointer events are made (XTEST), as if they came from
/// hardware. One thread, which may block for as long as the server does. Once the connection is broken,
/// everything does nothing.
class X11Display {
public:
    /// Null where no server answers, or one without XTEST or XKB.
    [[nodiscard]] static std::unique_ptr<X11Display> open();

    X11Display(const X11Display&) = delete;
    X11Display& operator=(const X11Display&) = delete;
    ~X11Display() = default;

    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(connection()) == 0; }
    [[nodiscard]] xcb_connection_t* connection() const { return connection_.get(); }
    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection()); }

    void sendKey(quint8 keycode, bool isDown) const;
    void sendMove(QPoint by) const;
    /// The primary button is 1 and the secondary one 3, whichever of a mouse's buttons they are.
    void sendButton(quint8 button, bool isDown);
    void lockGroup(int group) const;
    void flush() const { xcb_flush(connection()); }

    /// Waits for the server.
    [[nodiscard]] std::optional<KeyboardState> keyboardState() const;

    /// Reads what the server reports; does not wait.
    void readEvents();

    /// Whether anybody, also this connection, has changed the layout since the last call.
    [[nodiscard]] bool takeLayoutChange();

    /// The number that came back last in a "_NET_WM_PING" that a window answered.
    [[nodiscard]] quint32 lastPong() const { return lastPong_; }
    [[nodiscard]] xcb_atom_t protocolsAtom() const { return protocolsAtom_; }
    [[nodiscard]] xcb_atom_t pingAtom() const { return pingAtom_; }

private:
    X11Display() = default;
    [[nodiscard]] bool connect();
    void selectEvents() const;
    void handle(const xcb_generic_event_t& event);
    void readButtons();

    std::unique_ptr<xcb_connection_t, XcbDisconnect> connection_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_atom_t protocolsAtom_ = XCB_ATOM_NONE;
    xcb_atom_t pingAtom_ = XCB_ATOM_NONE;
    quint8 firstXkbEvent_ = 0;
    bool hasLayoutChanged_ = false;
    bool haveButtonsChanged_ = true;
    std::array<quint8, 4> physicalButtons_{0, 1, 2, 3};
    quint32 lastPong_ = 0;
};

} // namespace brenvale
