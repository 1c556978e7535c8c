#pragma once

#include <functional>

namespace brenvale {

class DispatchQueue;
struct Platform;

/// The user's permission to show notifications, at the start of the program. On main.
class NotificationPermission {
public:
    /// All arguments must outlive it.
    NotificationPermission(Platform& platform, DispatchQueue& main);
    NotificationPermission(const NotificationPermission&) = delete;
    NotificationPermission& operator=(const NotificationPermission&) = delete;

    /// Asks a user who was never asked, and tells one who has refused where that is changed. Returns at once.
    void requestNotificationPermission();

    std::function<void()> deniedAlertWillShow; ///< called just before
    std::function<void()> deniedAlertIsGone;   ///< from the screen

private:
    void requestAuthorization();
    void showNotificationDeniedAlert();

    Platform& platform_;
    DispatchQueue& main_;
};

} // namespace brenvale
