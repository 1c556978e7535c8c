#include "transfer/FileDropTab.h"

#include "link/WebSocketServer.h"
#include "platform/FileViewer.h"
#include "records/HistoryStore.h"

namespace brenvale {

FileDropTab::FileDropTab(HistoryStore& history, WebSocketServer& server, FileViewer& fileViewer)
    : history_(history), server_(server), fileViewer_(fileViewer), fileTransfers_(history) {}

FileDropTab::~FileDropTab() = default;

void FileDropTab::clearFileTransfers() {
    history_.clearFileTransfers();
}

void FileDropTab::sendFiles(const QList<QUrl>& files) {
    for (const auto& file : files) {
        server_.sendFile(file);
    }
}

void FileDropTab::showInFolder(const QUrl& file) {
    fileViewer_.activateFileViewerSelecting(file);
}

} // namespace brenvale
