#include "platform/InternalNotifications.h"

namespace brenvale {

InternalNotifications::Observation InternalNotifications::addObserver(QStringView name, Handler handler) {
    auto observer = std::make_shared<const Observer>(name.toString(), std::move(handler));
    observers_.push_back(observer);
    return observer;
}

void InternalNotifications::post(QStringView name, const Object& object) {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    const auto observers = observers_; // a handler may add or drop observers
    for (const auto& weak : observers) {
        if (const auto observer = weak.lock(); observer && observer->name == name) {
            observer->handler(object);
        }
    }
}

} // namespace brenvale
