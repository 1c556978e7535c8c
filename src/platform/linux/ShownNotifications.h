#pragma once

#include "platform/UserNotificationCenter.h"

#include <QHash>

#include <deque>

namespace brenvale {

/// The notifications that the server was given, by request and by the server's number. Those that are no
/// longer on show are kept too, as servers let the user answer them from a history. Bounded in count and
/// size, so that a server that never tells of closing costs nothing.
class ShownNotifications {
public:
    /// What a later answer needs.
    struct Notification {
        RequestIdentifier identifier; ///< of the request
        NotificationContent content;
    };

    /// The server's number of a request that is on show; 0 for any other.
    [[nodiscard]] uint serverId(const RequestIdentifier& identifier) const {
        return serverIds_.value(identifier);
    }

    /// The notification to which the server gave that number last, on show or not; null for none.
    [[nodiscard]] const Notification* find(uint serverId) const;

    /// The server shows `request` under that number.
    void insert(const NotificationRequest& request, uint serverId);

    /// It is no longer on show.
    void closed(uint serverId);

    /// Forgets all of them: the server that numbered them is gone.
    void clear();

private:
    void forget(uint serverId);
    [[nodiscard]] uint largestButLatest() const;

    QHash<RequestIdentifier, uint> serverIds_;
    QHash<uint, Notification> notifications_;
    std::deque<uint> order_; ///< oldest first
    qsizetype size_ = 0;     ///< characters kept
};

} // namespace brenvale
