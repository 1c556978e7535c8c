#pragma once

#include "platform/UserNotificationCenter.h"

namespace brenvale {

/// The text of a notification in the form of the Desktop Notifications Specification (freedesktop.org).
/// Characters that no server shows are left out, and what is longer than any server shows is cut. Pure.

/// Characters of a text that a server is given; what is longer ends in an ellipsis.
inline constexpr qsizetype longestNotificationText = 10'000;

/// The one-line title; never markup.
[[nodiscard]] QString notificationSummary(const NotificationContent& content);

/// What notifications are grouped by.
[[nodiscard]] QString notificationThread(const NotificationContent& content);

/// Subtitle and body below each other. With `hasMarkup` the text is escaped and the subtitle bold.
[[nodiscard]] QString notificationBody(const NotificationContent& content, bool hasMarkup);

} // namespace brenvale
