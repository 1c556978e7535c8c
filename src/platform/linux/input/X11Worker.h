#pragma once

#include "platform/linux/input/PointerSteps.h"
#include "platform/linux/input/PostedEvents.h"
#include "platform/linux/input/X11Keyboard.h"
#include "platform/linux/input/X11Typing.h"

#include <chrono>
#include <optional>

namespace brenvale {

/// Takes posted events and makes them happen on the X server, until the events are closed or the server is
/// gone. Lives on a thread of its own, which may wait for the server.
class X11Worker {
public:
    X11Worker(PostedEvents& events, X11Display& display);

    void run();

private:
    using Clock = std::chrono::steady_clock;

    void perform(const PostedEvent& event);
    void performBeside();
    void perform(const KeyEvent& event);
    void perform(const SystemDefinedEvent& event);
    void perform(const PointerMove& event);
    void perform(const PointerButton& event);
    [[nodiscard]] bool goesOn() const { return display_.isAlive() && (isFinishing_ || !events_.isClosed()); }
    /// Sleeps until there are events or reports of the server, or until `end`.
    void sleep(std::optional<Clock::time_point> end);
    bool wait(const std::function<bool()>& isDone, std::chrono::milliseconds limit);
    [[nodiscard]] std::optional<Clock::time_point> nextDue() const;
    void finish();

    PostedEvents& events_;
    X11Display& display_;
    X11Layout layout_;
    X11SpareKeys spareKeys_;
    X11Keyboard keyboard_;
    X11Typing typing_;
    PointerSteps steps_;
    bool isFinishing_ = false; ///< what is to be put right goes on after the end
};

} // namespace brenvale
