#include "notifications/NotificationPermission.h"

#include "platform/Alerts.h"
#include "platform/DispatchQueue.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/SystemSettings.h"
#include "platform/UserNotificationCenter.h"

#include <chrono>

namespace brenvale {

namespace {

/// The alert is gone from the screen by then.
constexpr std::chrono::milliseconds fadeOut{100};

Alert notificationDeniedAlert() {
    return {
        .style = Alert::Style::warning,
        .messageText = QStringLiteral("Notification Permission Required"),
        .informativeText = QStringLiteral(
            "Brenvale needs permission to show notifications forwarded from your Android device.\n\n"
            "Please open System Settings → Notifications → Brenvale and set \"Allow Notifications\" to On."),
        .buttons = {QStringLiteral("Open System Settings"), QStringLiteral("Not Now")}};
}

} // namespace

NotificationPermission::NotificationPermission(Platform& platform, DispatchQueue& main)
    : platform_(platform), main_(main) {}

void NotificationPermission::requestNotificationPermission() {
    platform_.userNotificationCenter.getNotificationSettings([this](AuthorizationStatus status) {
        main_.async([this, status] {
            if (status == AuthorizationStatus::notDetermined) {
                requestAuthorization();
            } else if (status == AuthorizationStatus::denied) {
                showNotificationDeniedAlert();
            }
        });
    });
}

void NotificationPermission::requestAuthorization() {
    platform_.userNotificationCenter.requestAuthorization(
        [this](bool isGranted, const std::optional<QString>& error) {
            if (error) {
                platform_.log.line("[Notifications] Authorization error: " + error->toUtf8());
            }
            if (!isGranted) {
                main_.async([this] { showNotificationDeniedAlert(); });
            }
        });
}

void NotificationPermission::showNotificationDeniedAlert() {
    deniedAlertWillShow();
    platform_.alerts.runModal(notificationDeniedAlert(), [this](int response) {
        if (response == Alert::firstButtonReturn) {
            platform_.systemSettings.open(SystemSettings::Pane::notifications);
        }
        main_.asyncAfter(fadeOut, [this] { deniedAlertIsGone(); });
    });
}

} // namespace brenvale
