#pragma once

namespace brenvale {

class UserNotificationCenter;
class WebSocketServer;
struct NotificationResponse;

/// Has the desktop offer a reply with the notifications of the category for it. On main.
void registerNotificationCategories(UserNotificationCenter& center);

/// Sends a reply to the phone, whatever its text; other responses do nothing. On main.
void sendReply(const NotificationResponse& response, WebSocketServer& server);

} // namespace brenvale
