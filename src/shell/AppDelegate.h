#pragma once

#include "platform/UserNotificationCenter.h"

#include <memory>

namespace brenvale {

class DispatchQueue;
class HistoryStore;
class WebSocketServer;
struct Platform;

/// The root of the process: it owns the store, wires the phone link to it, and brings everything up in order.
/// It lives until the process ends. Its members stand in the folders of what they do. On main.
class AppDelegate final : public UserNotificationCenterDelegate {
public:
    /// Whether the program shows among the running ones, in the task bar for instance.
    enum class ActivationPolicy : qint8 { regular, accessory };

    /// All arguments must outlive the delegate. Touches nothing yet.
    AppDelegate(Platform& platform, DispatchQueue& main, WebSocketServer& server);
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Called once when the event loop is about to run. No step depends on the success of an earlier one.
    void applicationDidFinishLaunching();

    /// The program lives in the background: closing windows never ends it.
    [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

    [[nodiscard]] HistoryStore& historyStore() { return *historyStore_; }
    [[nodiscard]] ActivationPolicy activationPolicy() const { return activationPolicy_; }

    // notifications/NotificationReplies.cpp

    /// Sends a reply to the phone, whatever its text; other responses do nothing.
    void userNotificationCenterDidReceive(const NotificationResponse& response) override;

    /// Notifications show while the program is in front as they do otherwise.
    [[nodiscard]] PresentationOptions
    userNotificationCenterWillPresent(const NotificationRequest& request) const override;

private:
    // shell/AppDelegate.cpp
    void checkAccessibilityPermission();
    void setActivationPolicy(ActivationPolicy policy) { activationPolicy_ = policy; }

    // notifications/NotificationPermission.cpp
    void requestNotificationPermission();
    void requestAuthorization();
    void showNotificationDeniedAlert();

    // notifications/NotificationReplies.cpp
    void registerNotificationCategories();

    Platform& platform_;
    DispatchQueue& main_;
    WebSocketServer& server_;
    std::shared_ptr<HistoryStore> historyStore_; ///< shared only so that the server can hold it weakly
    ActivationPolicy activationPolicy_ = ActivationPolicy::regular;
};

} // namespace brenvale
