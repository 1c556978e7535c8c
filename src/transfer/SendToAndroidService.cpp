#include "transfer/SendToAndroidService.h"

#include "link/WebSocketServer.h"
#include "platform/Log.h"
#include "transfer/FileUrl.h"

namespace brenvale {

bool sendToAndroid(const QList<QUrl>& urls, WebSocketServer& server, Log& log) {
    bool hasFile = false;
    for (const auto& url : urls) {
        if (const auto file = localFileUrl(url)) {
            hasFile = true;
            log.line("[AppDelegate] Service triggered for file: " + lastPathComponent(*file).toUtf8());
            server.sendFile(*file);
        }
    }
    return hasFile;
}

} // namespace brenvale
