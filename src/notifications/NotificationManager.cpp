#include "notifications/NotificationManager.h"

#include "notifications/PhoneNumberTitle.h"
#include "notifications/ReplyCategory.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "records/CutToInteger.h"
#include "records/NotifPayload.h"

#include <QUuid>

namespace brenvale {

namespace {

RequestIdentifier requestIdentifier(const NotifPayload& payload, const QString& bodyKey) {
    return payload.key ? RequestIdentifier(*payload.key)
                       : RequestIdentifier::joined({payload.app, payload.title, bodyKey});
}

/// `progress` in whole percent, the fraction dropped.
qint64 percentage(double progress) {
    static constexpr auto text =
        "Double value cannot be converted to Int because it is not a finite value in range";
    return cutToInteger(progress * 100, {.notFinite = text, .tooHigh = text, .tooLow = text});
}

} // namespace

NotificationManager::NotificationManager(UserNotificationCenter& center, const Clock& clock, Log& log)
    : center_(center), clock_(clock), log_(log) {}

void NotificationManager::post(const NotifPayload& payload) {
    const auto bodyKey = RecentBodies::bodyKey(payload.body);
    const double now = clock_.uptime();
    if (const auto repeated = recentBodies_.repeatedIdentifier(bodyKey, now)) {
        if (looksLikePhoneNumber(payload.title)) {
            return;
        }
        center_.removeDelivered({*repeated});
        center_.removePending({*repeated});
    }
    const auto identifier = requestIdentifier(payload, bodyKey);
    center_.add({identifier, content(payload)}, [&log = log_](const std::optional<QString>& error) {
        if (error) {
            log.line("[Notifications] Post error: " + error->toUtf8());
        }
    });
    recentBodies_.remember(bodyKey, identifier, now);
}

NotificationContent NotificationManager::content(const NotifPayload& payload) {
    NotificationContent content{.body = payload.body,
                                .hasDefaultSound = true,
                                .threadIdentifier = payload.app,
                                .categoryIdentifier = replyCategory.toString()};
    if (payload.app.isEmpty() || payload.app == u"Unknown") {
        content.title = payload.title.isEmpty() ? QStringLiteral("Brenvale") : payload.title;
    } else {
        content.title = payload.app;
        content.subtitle = payload.title;
    }
    return content;
}

void NotificationManager::postSimple(const QString& title, const QString& body) {
    const auto identifier = QUuid::createUuid().toString(QUuid::WithoutBraces);
    center_.add({identifier, {.title = title, .body = body, .hasDefaultSound = true}}, {});
}

void NotificationManager::postFileProgress(const QString& fileName, double progress,
                                           const QString& identifier) {
    const bool isDone = progress >= 1;
    const auto title = isDone ? QStringLiteral("File Received") : QStringLiteral("Receiving File...");
    const auto body = QStringLiteral("%1 (%2%)").arg(fileName, QString::number(percentage(progress)));
    center_.add({identifier, {.title = title, .body = body, .hasDefaultSound = isDone}}, {});
}

} // namespace brenvale
