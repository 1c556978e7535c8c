#include "link/WebSocketServer.h"
#include "platform/FileViewer.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "shell/SettingsView.h"

namespace brenvale {

void SettingsView::clearFileTransfers() {
    history_.clearFileTransfers();
}

void SettingsView::sendFiles(const QList<QUrl>& files) {
    for (const auto& file : files) {
        server_.sendFile(file);
    }
}

void SettingsView::showInFolder(const QUrl& file) {
    platform_.fileViewer.activateFileViewerSelecting(file);
}

} // namespace brenvale
