#include "link/WebSocketServer.h"
#include "platform/DispatchQueue.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "shell/AppDelegate.h"
#include "shell/SettingsView.h"

namespace brenvale {

void AppDelegate::handleSendToAndroidService(const QList<QUrl>& urls) {
    bool hasFile = false;
    for (const auto& url : urls) {
        if (url.isLocalFile()) {
            hasFile = true;
            platform_.log.line("[AppDelegate] Service triggered for file: " + url.fileName().toUtf8());
            server_.sendFile(url);
        }
    }
    if (hasFile) {
        main_.async([this] { showSettings(SettingsView::FileDropTab); });
    }
}

} // namespace brenvale
