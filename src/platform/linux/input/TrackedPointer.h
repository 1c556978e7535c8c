#pragma once

#include "platform/linux/input/PostedEvents.h"

#include <mutex>

namespace brenvale {

/// Where the pointer is, for a desktop that does not tell: where the last move ended, counted from the place
/// at which the first one found it. Any thread.
class TrackedPointer {
public:
    [[nodiscard]] QPointF location() const {
        const std::scoped_lock lock(mutex_);
        return location_;
    }

    /// What `event` means for a pointer that can only be moved relative to where it is.
    [[nodiscard]] PostedEvent follow(const MouseEvent& event);

private:
    mutable std::mutex mutex_;
    QPointF location_; ///< under `mutex_`
};

} // namespace brenvale
