#include "shell/ClipboardTab.h"

#include "platform/CopyText.h"
#include "records/HistoryStore.h"
#include "shell/SendClipboard.h"

namespace brenvale {

ClipboardTab::ClipboardTab(HistoryStore& history, WebSocketServer& server, Pasteboard& pasteboard)
    : history_(history), server_(server), pasteboard_(pasteboard), clipboardHistory_(history) {}

ClipboardTab::~ClipboardTab() = default;

void ClipboardTab::clearClipboard() {
    history_.clearClipboard();
}

void ClipboardTab::sendCurrentClipboard() {
    sendClipboard(pasteboard_, server_);
}

void ClipboardTab::copyText(const QString& text) {
    brenvale::copyText(pasteboard_, text);
}

} // namespace brenvale
