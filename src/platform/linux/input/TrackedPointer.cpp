#include "platform/linux/input/TrackedPointer.h"

#include <cmath>

namespace brenvale {

namespace {

constexpr double farthest = 1e9;

} // namespace

PostedEvent TrackedPointer::follow(const MouseEvent& event) {
    using enum MouseEvent::Type;
    if (event.type == moved) {
        const std::scoped_lock lock(mutex_);
        const auto by = event.position - location_;
        // Far out a place is too coarse to carry fractions; as only differences matter, it starts anew.
        const bool isNear =
            std::abs(event.position.x()) < farthest && std::abs(event.position.y()) < farthest;
        location_ = isNear ? event.position : QPointF();
        return PointerMove{.by = by};
    }
    return PointerButton{.isRight = event.type == rightDown || event.type == rightUp,
                         .isDown = event.type == leftDown || event.type == rightDown};
}

} // namespace brenvale
