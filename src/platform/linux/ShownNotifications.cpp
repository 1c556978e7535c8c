#include "platform/linux/ShownNotifications.h"

#include <algorithm>
#include <iterator>

namespace brenvale {

namespace {

constexpr std::size_t maxCount = 1000;
constexpr qsizetype maxSize = 16 << 20;

/// As much of a text as somebody needs to know what is being answered.
constexpr qsizetype reminderLength = 300;

NotificationContent reminder(const NotificationContent& content) {
    return {.title = content.title.left(reminderLength),
            .subtitle = content.subtitle.left(reminderLength),
            .body = content.body.left(reminderLength),
            .categoryIdentifier = content.categoryIdentifier};
}

} // namespace

const ShownNotifications::Notification* ShownNotifications::find(uint serverId) const {
    const auto found = notifications_.constFind(serverId);
    return found == notifications_.cend() ? nullptr : &*found;
}

void ShownNotifications::insert(const NotificationRequest& request, uint serverId) {
    forget(serverId); // a server may use a number again
    serverIds_.insert(request.identifier, serverId);
    notifications_.insert(serverId, {request.identifier, reminder(request.content)});
    order_.push_back(serverId);
    size_ += request.identifier.size();
    if (order_.size() > maxCount) {
        forget(order_.front());
    }
    while (size_ > maxSize && order_.size() > 1) {
        forget(largestButLatest());
    }
}

void ShownNotifications::closed(uint serverId) {
    const auto* notification = find(serverId);
    if (notification != nullptr && serverIds_.value(notification->identifier) == serverId) {
        serverIds_.remove(notification->identifier);
    }
}

/// One of megabytes must not push all the others out.
uint ShownNotifications::largestButLatest() const {
    return *std::max_element(order_.begin(), std::prev(order_.end()), [this](uint one, uint other) {
        return find(one)->identifier.size() < find(other)->identifier.size();
    });
}

void ShownNotifications::forget(uint serverId) {
    if (!notifications_.contains(serverId)) {
        return;
    }
    closed(serverId);
    size_ -= notifications_.take(serverId).identifier.size();
    std::erase(order_, serverId);
}

void ShownNotifications::clear() {
    *this = {};
}

} // namespace brenvale
