#pragma once

#include "platform/linux/input/KeyTable.h"
#include "platform/linux/input/TrackedPointer.h"

#include <chrono>
#include <string_view>
#include <thread>

namespace brenvale {

class VirtualInput;
class WaylandConnection;

/// Posts by a virtual keyboard and pointer of the compositor, from a thread of its own: a compositor that
/// hangs holds up nobody who posts, and what does not fit the queue meanwhile vanishes. One that goes, or
/// that has no such keyboard, ends it for good. Any thread.
class WaylandEventPoster final : public EventPoster {
public:
    WaylandEventPoster();
    ~WaylandEventPoster() override;
    WaylandEventPoster(const WaylandEventPoster&) = delete;
    WaylandEventPoster& operator=(const WaylandEventPoster&) = delete;

    [[nodiscard]] bool canMakeEvents() const override { return !events_.isClosed(); }
    [[nodiscard]] QPointF pointerLocation() const override { return pointer_.location(); }
    void post(const KeyEvent& event) override { events_.add(event); }
    void post(const SystemDefinedEvent& event) override { events_.add(event); }
    void post(const MouseEvent& event) override { events_.add(pointer_.follow(event)); }

private:
    using Milliseconds = std::chrono::milliseconds;

    void run();
    void perform(const PostedEvent& event);
    void perform(const KeyEvent& event);
    void press(const LinuxKey& key, quint32 modifiers, bool isDown);
    void type(std::u32string_view text);
    [[nodiscard]] bool arrive();
    [[nodiscard]] bool settle();
    [[nodiscard]] bool pass(Milliseconds time);

    PostedEvents events_;
    TrackedPointer pointer_;

    // On the thread.
    WaylandConnection* connection_ = nullptr;
    VirtualInput* input_ = nullptr;

    std::thread thread_; ///< last: it uses the rest
};

} // namespace brenvale
