#pragma once

#include <QList>
#include <QUrl>

namespace brenvale {

class Log;
class WebSocketServer;

/// Sends the local files among `urls`, which another program hands over; false where there is none. On main.
[[nodiscard]] bool sendToAndroid(const QList<QUrl>& urls, WebSocketServer& server, Log& log);

} // namespace brenvale
