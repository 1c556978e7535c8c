#pragma once

#include "platform/linux/input/X11Display.h"
#include "platform/linux/input/X11Wait.h"

#include <QByteArray>

namespace brenvale {

/// The program that has the keyboard, and how far it is with the keys that it was sent: programs translate a
/// key by the layout at the moment at which they read it, so nothing may change before. One thread.
class X11Receiver {
public:
    X11Receiver(X11Display& display, X11Wait wait) : display_(display), wait_(std::move(wait)) {}

    /// Looks who has the keyboard now. Waits for the server.
    void find();

    /// Waits until the program has read all keys sent so far: until it answers a ping, which comes behind
    /// them, or, where it answers none, until its process has gone to sleep. False where that took longer
    /// than `limit`.
    bool waitUntilRead(std::chrono::milliseconds limit);

private:
    [[nodiscard]] bool answersPings(xcb_window_t window) const;
    [[nodiscard]] quint32 processOf(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;
    void watchRoot(bool isOn) const;
    bool ping(std::chrono::milliseconds limit);
    bool waitForSleep(std::chrono::milliseconds limit);

    X11Display& display_;
    X11Wait wait_;
    xcb_window_t focus_ = XCB_WINDOW_NONE;
    xcb_window_t pinged_ = XCB_WINDOW_NONE; ///< none where the program answers no pings
    quint32 process_ = 0;                   ///< 0 where it is unknown or runs elsewhere
    quint32 pings_ = 0;
};

} // namespace brenvale
