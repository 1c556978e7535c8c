#include "platform/DispatchQueue.h"
#include "platform/Platform.h"
#include "platform/SystemSettings.h"
#include "platform/UserNotificationCenter.h"
#include "shell/LaunchAtLoginManager.h"
#include "shell/LocalIP.h"
#include "shell/SettingsView.h"

#include <QPointer>

#include <utility>

namespace brenvale {

QString SettingsView::localIP() {
    return LocalIPAddress::current();
}

int SettingsView::notifAuthStatus() const {
    return std::to_underlying(notifAuthStatus_);
}

void SettingsView::refreshNotifStatus() {
    platform_.userNotificationCenter.getNotificationSettings(
        [view = QPointer(this), &main = main_](AuthorizationStatus status) {
            main.async([view, status] {
                if (view) {
                    view->setNotifAuthStatus(status);
                }
            });
        });
}

void SettingsView::setNotifAuthStatus(AuthorizationStatus status) {
    if (notifAuthStatus_ != status) {
        notifAuthStatus_ = status;
        emit notifAuthStatusChanged();
    }
}

void SettingsView::requestNotificationPermission() {
    platform_.userNotificationCenter.requestAuthorization(
        [view = QPointer(this), &main = main_](bool /*isGranted*/, const std::optional<QString>& /*error*/) {
            // Whatever came of it, the desktop knows.
            main.async([view] {
                if (view) {
                    view->refreshNotifStatus();
                }
            });
        });
}

void SettingsView::openNotificationSettings() {
    platform_.systemSettings.open(SystemSettings::Pane::notifications);
}

void SettingsView::setLaunchAtLogin(bool isWanted) {
    if (launchAtLogin_ == isWanted) {
        return;
    }
    launchAtLogin_ = isWanted;
    LaunchAtLoginManager::setEnabled(platform_, isWanted);
    emit launchAtLoginChanged();
}

} // namespace brenvale
