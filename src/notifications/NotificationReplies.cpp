#include "notifications/ReplyCategory.h"

#include "link/WebSocketServer.h"
#include "platform/Platform.h"
#include "shell/AppDelegate.h"

namespace brenvale {

namespace {

const QString replyAction = QStringLiteral("REPLY_ACTION");

} // namespace

void AppDelegate::registerNotificationCategories() {
    const TextInputNotificationAction reply{.identifier = replyAction,
                                            .title = QStringLiteral("Reply"),
                                            .textInputButtonTitle = QStringLiteral("Send"),
                                            .textInputPlaceholder = QStringLiteral("Type your reply...")};
    platform_.userNotificationCenter.setNotificationCategories(
        {{.identifier = replyCategory.toString(), .actions = {reply}}});
}

void AppDelegate::userNotificationCenterDidReceive(const NotificationResponse& response) {
    if (response.actionIdentifier == replyAction && response.userText) {
        server_.sendReply(response.requestIdentifier, *response.userText);
    }
}

PresentationOptions
AppDelegate::userNotificationCenterWillPresent(const NotificationRequest& /*request*/) const {
    return {.banner = true, .sound = true, .badge = true};
}

} // namespace brenvale
