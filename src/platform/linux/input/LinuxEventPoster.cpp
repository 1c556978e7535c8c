#include "platform/linux/input/LinuxEventPoster.h"

#include <algorithm>

namespace brenvale {

EventPoster* LinuxEventPoster::wayThatWorks() const {
    const auto way = std::ranges::find_if(ways_, [](const auto& each) { return each->canMakeEvents(); });
    return way != ways_.end() ? way->get() : nullptr;
}

bool LinuxEventPoster::canMakeEvents() const {
    return wayThatWorks() != nullptr;
}

QPointF LinuxEventPoster::pointerLocation() const {
    const auto* way = wayThatWorks();
    return way != nullptr ? way->pointerLocation() : QPointF();
}

void LinuxEventPoster::post(const KeyEvent& event) {
    if (auto* way = wayThatWorks()) {
        way->post(event);
    }
}

void LinuxEventPoster::post(const SystemDefinedEvent& event) {
    if (auto* way = wayThatWorks()) {
        way->post(event);
    }
}

void LinuxEventPoster::post(const MouseEvent& event) {
    if (auto* way = wayThatWorks()) {
        way->post(event);
    }
}

} // namespace brenvale
