#include "platform/linux/ShownNotifications.h"

namespace brenvale {

namespace {

constexpr std::size_t maxCount = 1000;
constexpr qsizetype maxSize = 4 << 20;

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
    while (order_.size() > maxCount || (size_ > maxSize && order_.size() > 1)) {
        forget(order_.front());
    }
}

void ShownNotifications::closed(uint serverId) {
    const auto* notification = find(serverId);
    if (notification != nullptr && serverIds_.value(notification->identifier) == serverId) {
        serverIds_.remove(notification->identifier);
    }
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
