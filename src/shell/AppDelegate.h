#pragma once

#include "calls/CallWindows.h"
#include "notifications/NotificationPermission.h"
#include "platform/UserNotificationCenter.h"
#include "records/Published.h"

#include <QUrl>

#include <functional>
#include <memory>

namespace brenvale {

class DispatchQueue;
class HistoryStore;
class MainWindow;
class SettingsView;
class WebSocketServer;
struct Platform;

/// The root of the process: it owns the store and the windows, wires the phone link to the store, and brings
/// everything up in order. It lives until the process ends. On main.
class AppDelegate final : public UserNotificationCenterDelegate {
public:
    /// Whether the program shows among the running ones, in the task bar for instance.
    enum class ActivationPolicy : qint8 { regular, accessory };

    using MakeMainWindow = std::function<std::unique_ptr<MainWindow>(SettingsView& view)>;

    /// All arguments must outlive the delegate. Touches nothing yet.
    AppDelegate(Platform& platform, DispatchQueue& main, WebSocketServer& server,
                MakeMainWindow makeMainWindow, CallWindows::MakePanels makeCallPanels);
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    [[nodiscard]] HistoryStore& historyStore() { return *historyStore_; }
    [[nodiscard]] ActivationPolicy activationPolicy() const { return activationPolicy_; }

    // shell/AppDelegate.cpp

    /// Called once when the event loop is about to run. No step depends on the success of an earlier one.
    void applicationDidFinishLaunching();

    /// The program lives in the background: closing windows never ends it.
    [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

    /// The user starts the running program once more: the window comes back on the tab that was shown last.
    /// One that is on show stays as it is. Always true.
    bool applicationShouldHandleReopen();

    /// The user has started the program by hand: a desktop without a tray would show nothing of it, so the
    /// window opens once there, unless it has been open meanwhile. Called before the launch.
    void openWindowWithoutTray();

    /// Brings the main window up on the tab of that number.
    void showSettings(int tab);

    /// Another program hands files over to be sent. Does nothing without a local file among them.
    void handleSendToAndroidService(const QList<QUrl>& urls);

    /// Sends a reply to the phone, whatever its text; other responses do nothing.
    void userNotificationCenterDidReceive(const NotificationResponse& response) override;

    /// Notifications show while the program is in front as they do otherwise.
    [[nodiscard]] PresentationOptions
    userNotificationCenterWillPresent(const NotificationRequest& request) const override;

    // shell/StatusMenu.cpp

    /// Does what the menu's row of that name does ("call", "sms", ..., "quit"), or presses the button of a
    /// call's panel; nothing for another name.
    void activateAction(const QString& name);

private:
    // shell/AppDelegate.cpp
    void checkAccessibilityPermission();
    void buildSettingsWindow();
    void windowWillClose();
    void setActivationPolicy(ActivationPolicy policy) { activationPolicy_ = policy; }
    [[nodiscard]] bool isSettingsWindowVisible() const;

    // shell/StatusMenu.cpp
    void buildMenu();

    Platform& platform_;
    DispatchQueue& main_;
    WebSocketServer& server_;
    MakeMainWindow makeMainWindow_;
    NotificationPermission notificationPermission_;
    std::shared_ptr<HistoryStore> historyStore_; ///< shared only so that the server can hold it weakly
    std::shared_ptr<CallWindows> callWindows_;   ///< shared only so that its steps can hold it weakly
    std::unique_ptr<SettingsView> settingsView_; ///< made with the window
    std::unique_ptr<MainWindow> settingsWindow_; ///< made when it is first shown, then kept
    Subscription addressChanges_;                ///< while the window is on show
    ActivationPolicy activationPolicy_ = ActivationPolicy::regular;
};

} // namespace brenvale
