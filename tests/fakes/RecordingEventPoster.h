#pragma once

#include "platform/EventPoster.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <variant>
#include <vector>

namespace brenvale {

/// Keeps what is posted, from any thread, and has a pointer that follows the moves.
class RecordingEventPoster final : public EventPoster {
public:
    using Event = std::variant<KeyEvent, SystemDefinedEvent, MouseEvent>;

    [[nodiscard]] bool canMakeEvents() const override;
    [[nodiscard]] QPointF pointerLocation() const override;

    void post(const KeyEvent& event) override { record(event); }
    void post(const SystemDefinedEvent& event) override { record(event); }
    void post(const MouseEvent& event) override { record(event); }

    void movePointer(QPointF to);

    /// What was posted, in order; with `letsThrough` unset nothing.
    [[nodiscard]] std::vector<Event> events() const;

    /// The events of one kind, in order.
    template <typename Kind>
    [[nodiscard]] std::vector<Kind> eventsOf() const {
        std::vector<Kind> found;
        for (const auto& event : events()) {
            if (const auto* kind = std::get_if<Kind>(&event)) {
                found.push_back(*kind);
            }
        }
        return found;
    }

    std::atomic<bool> makesEvents = true;
    std::atomic<bool> letsThrough = true; ///< without it all that is posted vanishes, as without consent
    std::function<void()> asked;          ///< looks at what the world was like at each `canMakeEvents`
    std::function<void()> posting;        ///< and at each event

private:
    void record(const Event& event);

    mutable std::mutex mutex_;
    std::vector<Event> events_;
    QPointF pointer_;
};

} // namespace brenvale
