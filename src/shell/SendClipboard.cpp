#include "shell/SendClipboard.h"

#include "link/WebSocketServer.h"
#include "platform/Pasteboard.h"

namespace brenvale {

void sendClipboard(Pasteboard& pasteboard, WebSocketServer& server) {
    pasteboard.string([&server](const std::optional<QString>& text) {
        if (text && !text->isEmpty()) {
            server.sendClipboard(*text);
        }
    });
}

} // namespace brenvale
