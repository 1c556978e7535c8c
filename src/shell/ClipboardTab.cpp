#include "link/WebSocketServer.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "shell/SettingsView.h"

namespace brenvale {

void SettingsView::clearClipboard() {
    history_.clearClipboard();
}

void SettingsView::sendCurrentClipboard() {
    platform_.pasteboard.string([&server = server_](const std::optional<QString>& text) {
        if (text && !text->isEmpty()) {
            server.sendClipboard(*text);
        }
    });
}

void SettingsView::copyText(const QString& text) {
    platform_.pasteboard.clearContents();
    platform_.pasteboard.setString(text);
}

} // namespace brenvale
