#pragma once

#include "platform/RequestIdentifier.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace brenvale {

/// What a desktop notification shows. Plain text everywhere; the back end escapes where its desktop needs it.
struct NotificationContent {
    QString title;
    QString subtitle;
    QString body;
    bool hasDefaultSound = false; ///< without it the notification is silent
    QString threadIdentifier;     ///< notifications of one thread are grouped
    QString categoryIdentifier;   ///< chooses the actions that are offered
};

/// A notification to show at once. A request whose identifier is still on show replaces that notification in
/// place.
struct NotificationRequest {
    RequestIdentifier identifier;
    NotificationContent content;
};

/// An action of a notification that asks the user for a text.
struct TextInputNotificationAction {
    QString identifier;
    QString title;
    QString textInputButtonTitle;
    QString textInputPlaceholder;
};

/// What notifications of one kind offer.
struct NotificationCategory {
    QString identifier;
    QList<TextInputNotificationAction> actions;
};

/// What the user did with a notification.
struct NotificationResponse {
    QString actionIdentifier;
    QString requestIdentifier;
    std::optional<QString> userText; ///< exactly as typed; only a text input action has one
};

/// How a notification may show while the program itself is in front.
struct PresentationOptions {
    bool banner = false;
    bool sound = false;
    bool badge = false;
};

/// Whether the user lets the program show notifications; the numbers are those that the field uses.
enum class AuthorizationStatus : qint8 {
    notDetermined = 0,
    denied = 1,
    authorized = 2,
    provisional = 3,
    ephemeral = 4
};

/// Hears what happens to notifications. On main.
class UserNotificationCenterDelegate {
public:
    virtual ~UserNotificationCenterDelegate() = default;

    /// The user answered a notification. A plain click and a dismissal need not be told.
    virtual void userNotificationCenterDidReceive(const NotificationResponse& response) = 0;

    /// Asked by desktops that hold notifications back while the program is in front; others do not ask.
    [[nodiscard]] virtual PresentationOptions
    userNotificationCenterWillPresent(const NotificationRequest& request) const = 0;
};

/// The desktop's notification service. Requests and removals take effect in the order of the calls.
/// Any thread; no call blocks, however slow the service is.
class UserNotificationCenter {
public:
    /// Gets the error's text, or nothing when the service took the request. Runs on main.
    using Completion = std::move_only_function<void(std::optional<QString> error)>;

    using SettingsAnswer = std::move_only_function<void(AuthorizationStatus status)>;
    using AuthorizationAnswer = std::move_only_function<void(bool isGranted, std::optional<QString> error)>;

    virtual ~UserNotificationCenter() = default;

    /// Who hears of responses from now on; it must outlive the centre's use.
    virtual void setDelegate(UserNotificationCenterDelegate* delegate) = 0;

    /// Sets the whole set of categories that requests may name.
    virtual void setNotificationCategories(QList<NotificationCategory> categories) = 0;

    /// Reads whether notifications are allowed now. The answer may come on any thread.
    virtual void getNotificationSettings(SettingsAnswer answer) = 0;

    /// Asks for the permission, which may take as long as the user does. The answer may come on any thread.
    virtual void requestAuthorization(AuthorizationAnswer answer) = 0;

    /// Shows `request`. `completion` may be empty.
    virtual void add(NotificationRequest request, Completion completion) = 0;

    /// Takes away those of the notifications that are on show.
    virtual void removeDelivered(const QList<RequestIdentifier>& identifiers) = 0;

    /// Drops those of the requests that the service has not been given yet. Their completions get no error.
    virtual void removePending(const QList<RequestIdentifier>& identifiers) = 0;
};

} // namespace brenvale
