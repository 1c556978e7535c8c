#pragma once

#include "platform/EventPoster.h"

#include <memory>
#include <vector>

namespace brenvale {

/// Posts by the first way that works at this moment. Where none does, events vanish: none is kept until one
/// works. Any thread.
class LinuxEventPoster final : public EventPoster {
public:
    using Ways = std::vector<std::unique_ptr<EventPoster>>;

    /// `ways`, the best first, never change.
    explicit LinuxEventPoster(Ways ways) : ways_(std::move(ways)) {}

    [[nodiscard]] bool canMakeEvents() const override;
    [[nodiscard]] QPointF pointerLocation() const override;
    void post(const KeyEvent& event) override;
    void post(const SystemDefinedEvent& event) override;
    void post(const MouseEvent& event) override;

private:
    [[nodiscard]] EventPoster* wayThatWorks() const;

    const Ways ways_;
};

} // namespace brenvale
