#include "platform/linux/NotifyCall.h"

#include "platform/linux/NotificationText.h"

namespace brenvale {

namespace {

const QString actions = QStringLiteral("actions");

void addActions(NotifyCall& call, const NotificationCategory& category, const QSet<QString>& capabilities) {
    for (const auto& action : category.actions) {
        if (capabilities.contains(inlineReplyAction)) {
            call.actions << inlineReplyAction << action.title;
            call.hints.insert(QStringLiteral("x-kde-reply-placeholder-text"), action.textInputPlaceholder);
            call.hints.insert(QStringLiteral("x-kde-reply-submit-button-text"), action.textInputButtonTitle);
        } else if (capabilities.contains(actions)) {
            call.actions << action.identifier << action.title;
        }
    }
}

} // namespace

NotifyCall notifyCall(const NotificationContent& content, const NotificationCategory* category,
                      const QSet<QString>& capabilities, bool opensProgramByItself) {
    NotifyCall call{.body = notificationBody(content, capabilities.contains(QStringLiteral("body-markup"))),
                    .hints = {{QStringLiteral("desktop-entry"), QStringLiteral("org.brenvale.Brenvale")}}};
    if (content.hasDefaultSound) {
        call.hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    } else {
        call.hints.insert(QStringLiteral("suppress-sound"), true);
    }
    if (!content.threadIdentifier.isEmpty()) {
        call.hints.insert(QStringLiteral("x-kde-origin-name"), notificationThread(content));
    }
    if (category != nullptr) {
        addActions(call, *category, capabilities);
    }
    if (opensProgramByItself && capabilities.contains(actions)) {
        call.actions << QStringLiteral("default") << QString(); // nobody acts on it
    }
    return call;
}

} // namespace brenvale
