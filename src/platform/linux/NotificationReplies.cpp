#include "platform/linux/NotificationReplies.h"

#include "platform/linux/ActivationToken.h"
#include "platform/linux/NotificationNames.h"

#include <QDBusConnection>

#include <algorithm>

namespace brenvale {

NotificationReplies::NotificationReplies(const ShownNotifications& shown) : shown_(shown) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(notificationService, notificationPath, notificationService, QStringLiteral("ActivationToken"),
                this, SLOT(activationToken(uint, QString)));
    bus.connect(notificationService, notificationPath, notificationService, QStringLiteral("ActionInvoked"),
                this, SLOT(actionInvoked(uint, QString)));
    bus.connect(notificationService, notificationPath, notificationService,
                QStringLiteral("NotificationReplied"), this, SLOT(notificationReplied(uint, QString)));
}

const NotificationCategory* NotificationReplies::category(const QString& identifier) const {
    const auto found = std::ranges::find(categories_, identifier, &NotificationCategory::identifier);
    return found == categories_.end() ? nullptr : &*found;
}

void NotificationReplies::actionInvoked(uint serverId, const QString& action) {
    const auto* notification = shown_.find(serverId);
    const auto* offered =
        notification != nullptr ? category(notification->content.categoryIdentifier) : nullptr;
    if (offered == nullptr) {
        return;
    }
    const auto invoked =
        std::ranges::find(offered->actions, action, &TextInputNotificationAction::identifier);
    if (invoked != offered->actions.end()) {
        openReplyWindow(*notification, *invoked);
    }
}

void NotificationReplies::notificationReplied(uint serverId, const QString& text) {
    const auto* notification = shown_.find(serverId);
    const auto* offered =
        notification != nullptr ? category(notification->content.categoryIdentifier) : nullptr;
    if (offered != nullptr && !offered->actions.isEmpty()) {
        reply(notification->identifier, offered->actions.constFirst(), text);
    }
}

void NotificationReplies::activationToken(uint serverId, const QString& token) {
    if (shown_.find(serverId) != nullptr) {
        activationToken_ = token;
    }
}

void NotificationReplies::openReplyWindow(const ShownNotifications::Notification& notification,
                                          const TextInputNotificationAction& action) {
    const auto identifier = notification.identifier;
    auto& window = windows_[identifier];
    if (window.isNull() || !window->isVisible()) { // one that was just closed goes by itself
        const auto send = [this, identifier, action](const QString& text) {
            reply(identifier, action, text);
        };
        window = new ReplyWindow(action, notification.content, send);
        connect(window, &QObject::destroyed, this, [this, identifier] {
            if (const auto found = windows_.constFind(identifier);
                found != windows_.cend() && found->isNull()) {
                windows_.erase(found);
            }
        });
    }
    const ActivationToken token(std::exchange(activationToken_, {}));
    window->present();
}

void NotificationReplies::reply(const RequestIdentifier& identifier,
                                const TextInputNotificationAction& action, const QString& text) {
    if (delegate_ != nullptr) {
        delegate_->userNotificationCenterDidReceive({.actionIdentifier = action.identifier,
                                                     .requestIdentifier = identifier.text(),
                                                     .userText = text});
    }
}

} // namespace brenvale
