#include "shell/SettingsTab.h"

#include "link/WebSocketServer.h"
#include "platform/CopyText.h"
#include "platform/DispatchQueue.h"
#include "platform/Platform.h"
#include "platform/SystemSettings.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "records/HistoryStore.h"
#include "shell/LaunchAtLoginManager.h"
#include "shell/LocalIP.h"

#include <QLocale>
#include <QPointer>

#include <utility>

namespace brenvale {

namespace {

constexpr QStringView portKey = u"port";
constexpr qint64 defaultPort = 8765;

} // namespace

SettingsTab::SettingsTab(Platform& platform, DispatchQueue& main, WebSocketServer& server,
                         HistoryStore& history)
    : platform_(platform),
      main_(main),
      server_(server),
      port_(storedPort()),
      launchAtLogin_(LaunchAtLoginManager::isEnabled(platform)) {
    subscriptions_.push_back(platform.userDefaults.observe([this] { storedPortChanged(); }));
    follow(history.connectedRemoteIP, phone_.remoteIP);
    follow(history.connectedWifiName, phone_.wifiName);
    follow(history.connectedDeviceName, phone_.deviceName);
    follow(history.batteryLevel, phone_.batteryLevel);
    follow(history.isCharging, phone_.isCharging);
}

SettingsTab::~SettingsTab() = default;

template <typename Value>
void SettingsTab::follow(Published<Value>& source, Value& copy) {
    subscriptions_.push_back(source.subscribe([this, &copy](const Value& value) {
        if (copy != value) {
            copy = value;
            emit phoneStatusChanged();
        }
    }));
}

void SettingsTab::appeared() {
    refreshNotifStatus();
    refreshLocalIP();
}

qint64 SettingsTab::storedPort() const {
    const auto& defaults = platform_.userDefaults;
    return defaults.contains(portKey) ? defaults.integer(portKey) : defaultPort;
}

void SettingsTab::storedPortChanged() {
    const auto port = storedPort();
    if (port == port_) {
        return;
    }
    port_ = port;
    emit portChanged();
    serverRestartNeeded_ = true; // even if it is the port that the server has
    emit serverRestartNeededChanged();
}

QString SettingsTab::portText() const {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(port_);
}

bool SettingsTab::commitPort(const QString& text) {
    bool isInteger = false;
    const auto port = QLocale().toLongLong(text.trimmed(), &isInteger);
    if (isInteger) {
        platform_.userDefaults.setInteger(portKey, port); // which is observed
    }
    return isInteger;
}

void SettingsTab::restartServer() {
    server_.start();
    serverRestartNeeded_ = false;
    emit serverRestartNeededChanged();
}

QString SettingsTab::localIP() {
    return LocalIPAddress::current();
}

void SettingsTab::copyLocalIP() {
    copyText(platform_.pasteboard, localIP());
}

void SettingsTab::refreshLocalIP() {
    emit localIPChanged();
}

int SettingsTab::notifAuthStatus() const {
    return std::to_underlying(notifAuthStatus_);
}

void SettingsTab::refreshNotifStatus() {
    platform_.userNotificationCenter.getNotificationSettings(
        [tab = QPointer(this), &main = main_](AuthorizationStatus status) {
            main.async([tab, status] {
                if (tab) {
                    tab->setNotifAuthStatus(status);
                }
            });
        });
}

void SettingsTab::setNotifAuthStatus(AuthorizationStatus status) {
    if (notifAuthStatus_ != status) {
        notifAuthStatus_ = status;
        emit notifAuthStatusChanged();
    }
}

void SettingsTab::requestNotificationPermission() {
    platform_.userNotificationCenter.requestAuthorization(
        [tab = QPointer(this), &main = main_](bool /*isGranted*/, const std::optional<QString>& /*error*/) {
            // Whatever came of it, the desktop knows.
            main.async([tab] {
                if (tab) {
                    tab->refreshNotifStatus();
                }
            });
        });
}

void SettingsTab::openNotificationSettings() {
    platform_.systemSettings.open(SystemSettings::Pane::notifications);
}

void SettingsTab::setLaunchAtLogin(bool isWanted) {
    if (launchAtLogin_ == isWanted) {
        return;
    }
    launchAtLogin_ = isWanted;
    LaunchAtLoginManager::setEnabled(platform_, isWanted);
    emit launchAtLoginChanged();
}

} // namespace brenvale
