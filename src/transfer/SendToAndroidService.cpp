#include "link/WebSocketServer.h"
#include "platform/DispatchQueue.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "shell/AppDelegate.h"
#include "shell/Tab.h"
#include "transfer/FileUrl.h"

namespace brenvale {

void AppDelegate::handleSendToAndroidService(const QList<QUrl>& urls) {
    bool hasFile = false;
    for (const auto& url : urls) {
        if (const auto file = localFileUrl(url)) {
            hasFile = true;
            platform_.log.line("[AppDelegate] Service triggered for file: " +
                               lastPathComponent(*file).toUtf8());
            server_.sendFile(*file);
        }
    }
    if (hasFile) {
        main_.async([this] { showSettings(Tab::fileDrop); });
    }
}

} // namespace brenvale
