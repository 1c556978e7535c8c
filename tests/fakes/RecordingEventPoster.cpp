#include "fakes/RecordingEventPoster.h"

namespace brenvale {

bool RecordingEventPoster::canMakeEvents() const {
    if (asked) {
        asked();
    }
    return makesEvents;
}

QPointF RecordingEventPoster::pointerLocation() const {
    const std::scoped_lock lock(mutex_);
    return pointer_;
}

void RecordingEventPoster::movePointer(QPointF to) {
    const std::scoped_lock lock(mutex_);
    pointer_ = to;
}

std::vector<RecordingEventPoster::Event> RecordingEventPoster::events() const {
    const std::scoped_lock lock(mutex_);
    return events_;
}

void RecordingEventPoster::record(const Event& event) {
    if (posting) {
        posting();
    }
    const std::scoped_lock lock(mutex_);
    if (!letsThrough) {
        return;
    }
    if (const auto* mouse = std::get_if<MouseEvent>(&event)) {
        pointer_ = mouse->position;
    }
    events_.push_back(event);
}

} // namespace brenvale
