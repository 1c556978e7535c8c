#pragma once

#include "records/Published.h"
#include "shell/PhoneStatus.h"

#include <QObject>

#include <vector>

namespace brenvale {

class DispatchQueue;
class HistoryStore;
class WebSocketServer;
enum class AuthorizationStatus : qint8;
struct Platform;

/// The state of the tab with the settings: whether the phone is linked, where it finds this computer, and
/// what the desktop allows. On main.
class SettingsTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString deviceName READ deviceName NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString networkText READ networkText NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString batteryText READ batteryText NOTIFY phoneStatusChanged)
    Q_PROPERTY(bool isBatteryLow READ isBatteryLow NOTIFY phoneStatusChanged)
    Q_PROPERTY(bool isCharging READ isCharging NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString portText READ portText NOTIFY portChanged)
    Q_PROPERTY(bool serverRestartNeeded READ serverRestartNeeded NOTIFY serverRestartNeededChanged)
    Q_PROPERTY(QString localIP READ localIP NOTIFY localIPChanged)
    Q_PROPERTY(int notifAuthStatus READ notifAuthStatus NOTIFY notifAuthStatusChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)

public:
    /// All arguments must outlive the tab.
    SettingsTab(Platform& platform, DispatchQueue& main, WebSocketServer& server, HistoryStore& history);
    ~SettingsTab() override;
    SettingsTab(const SettingsTab&) = delete;
    SettingsTab& operator=(const SettingsTab&) = delete;

    /// The tab comes on screen.
    Q_INVOKABLE void appeared();

    [[nodiscard]] bool isConnected() const { return phone_.isConnected(); }
    [[nodiscard]] QString deviceName() const { return phone_.deviceName.value_or(QString()); }
    [[nodiscard]] QString networkText() const { return phone_.networkText(); }
    [[nodiscard]] QString batteryText() const { return phone_.batteryText(); }
    [[nodiscard]] bool isBatteryLow() const { return phone_.isBatteryLow(); }
    [[nodiscard]] bool isCharging() const { return phone_.isCharging; }

    [[nodiscard]] QString portText() const;
    [[nodiscard]] bool serverRestartNeeded() const { return serverRestartNeeded_; }

    /// Stores what the field holds, if that is an integer; otherwise the field is to show `portText` again.
    Q_INVOKABLE bool commitPort(const QString& text);
    Q_INVOKABLE void restartServer();

    /// The address by which the phone reaches this computer; each call reads the adapters anew.
    [[nodiscard]] static QString localIP();
    Q_INVOKABLE void copyLocalIP();

    /// Has the address shown afresh: the network may be another by now.
    void refreshLocalIP();

    /// A value of `AuthorizationStatus`, as it was when it was last asked for.
    [[nodiscard]] int notifAuthStatus() const;
    void refreshNotifStatus();
    Q_INVOKABLE void requestNotificationPermission();
    Q_INVOKABLE void openNotificationSettings();

    /// What the user chose, even where the desktop did not take it.
    [[nodiscard]] bool launchAtLogin() const { return launchAtLogin_; }
    void setLaunchAtLogin(bool isWanted);

signals:
    void phoneStatusChanged();
    void portChanged();
    void serverRestartNeededChanged();
    void localIPChanged();
    void notifAuthStatusChanged();
    void launchAtLoginChanged();

private:
    /// Keeps `copy`, a part of the phone's status, equal to `source`.
    template <typename Value>
    void follow(Published<Value>& source, Value& copy);

    [[nodiscard]] qint64 storedPort() const;
    void storedPortChanged();
    void setNotifAuthStatus(AuthorizationStatus status);

    Platform& platform_;
    DispatchQueue& main_;
    WebSocketServer& server_;
    PhoneStatus phone_;
    qint64 port_; ///< as stored
    bool serverRestartNeeded_ = false;
    AuthorizationStatus notifAuthStatus_{}; ///< not determined
    bool launchAtLogin_;
    std::vector<Subscription> subscriptions_; ///< last: no observer is called while the rest goes
};

} // namespace brenvale
