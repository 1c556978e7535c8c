#include "notifications/NotificationReplies.h"

#include "link/WebSocketServer.h"
#include "notifications/ReplyCategory.h"
#include "platform/UserNotificationCenter.h"

namespace brenvale {

namespace {

const QString replyAction = QStringLiteral("REPLY_ACTION");

} // namespace

void registerNotificationCategories(UserNotificationCenter& center) {
    const TextInputNotificationAction reply{.identifier = replyAction,
                                            .title = QStringLiteral("Reply"),
                                            .textInputButtonTitle = QStringLiteral("Send"),
                                            .textInputPlaceholder = QStringLiteral("Type your reply...")};
    center.setNotificationCategories({{.identifier = replyCategory.toString(), .actions = {reply}}});
}

void sendReply(const NotificationResponse& response, WebSocketServer& server) {
    if (response.actionIdentifier == replyAction && response.userText) {
        server.sendReply(response.requestIdentifier, *response.userText);
    }
}

} // namespace brenvale
