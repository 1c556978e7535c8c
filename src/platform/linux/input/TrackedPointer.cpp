#include "platform/linux/input/TrackedPointer.h"

namespace brenvale {

PostedEvent TrackedPointer::follow(const MouseEvent& event) {
    using enum MouseEvent::Type;
    if (event.type == moved) {
        const std::scoped_lock lock(mutex_);
        const auto by = event.position - location_;
        location_ = event.position;
        return PointerMove{.by = by};
    }
    return PointerButton{.isRight = event.type == rightDown || event.type == rightUp,
                         .isDown = event.type == leftDown || event.type == rightDown};
}

} // namespace brenvale
