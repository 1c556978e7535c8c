#pragma once

#include "platform/EventPoster.h"
#include "platform/linux/input/TrackedPointer.h"

#include <memory>

namespace brenvale {

/// Posts events to the X server by its XTEST extension, on a connection and a thread of its own. Made where a
/// server is known to have it: what is posted waits until it is connected. Where it turns out that none
/// answers, or once it is gone, nothing can be posted any more.
class X11EventPoster final : public EventPoster {
public:
    X11EventPoster();
    X11EventPoster(const X11EventPoster&) = delete;
    X11EventPoster& operator=(const X11EventPoster&) = delete;
    /// Waits a moment for what is down to come up and for what was lent to go back, but not for a server that
    /// hangs.
    ~X11EventPoster() override;

    /// The same, about a second at most, for who ends without it: nothing can be posted any more. Any thread;
    /// a second call does nothing.
    void end();

    [[nodiscard]] bool canMakeEvents() const override;
    [[nodiscard]] QPointF pointerLocation() const override;
    void post(const KeyEvent& event) override;
    void post(const SystemDefinedEvent& event) override;
    void post(const MouseEvent& event) override;

private:
    class Thread;

    std::shared_ptr<Thread> thread_; ///< shared with the thread itself, which a server that hangs may hold
    TrackedPointer pointer_;
};

} // namespace brenvale
