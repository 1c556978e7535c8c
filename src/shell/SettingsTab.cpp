#include "link/WebSocketServer.h"
#include "platform/CopyText.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "shell/SettingsView.h"

#include <QLocale>

namespace brenvale {

namespace {

constexpr QStringView portKey = u"port";
constexpr qint64 defaultPort = 8765;

} // namespace

qint64 SettingsView::storedPort() const {
    const auto& defaults = platform_.userDefaults;
    return defaults.contains(portKey) ? defaults.integer(portKey) : defaultPort;
}

void SettingsView::storedPortChanged() {
    const auto port = storedPort();
    if (port == port_) {
        return;
    }
    port_ = port;
    emit portChanged();
    serverRestartNeeded_ = true; // even if it is the port that the server has
    emit serverRestartNeededChanged();
}

QString SettingsView::portText() const {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(port_);
}

bool SettingsView::commitPort(const QString& text) {
    bool isInteger = false;
    const auto port = QLocale().toLongLong(text.trimmed(), &isInteger);
    if (isInteger) {
        platform_.userDefaults.setInteger(portKey, port); // which is observed
    }
    return isInteger;
}

void SettingsView::restartServer() {
    server_.start();
    serverRestartNeeded_ = false;
    emit serverRestartNeededChanged();
}

void SettingsView::copyLocalIP() {
    copyText(platform_.pasteboard, localIP());
}

void SettingsView::settingsTabAppeared() {
    refreshNotifStatus();
    emit localIPChanged();
}

} // namespace brenvale
