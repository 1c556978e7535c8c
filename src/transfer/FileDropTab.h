#pragma once

#include "transfer/FileTransferListModel.h"

#include <QList>
#include <QObject>
#include <QUrl>

namespace brenvale {

class FileViewer;
class HistoryStore;
class WebSocketServer;

/// The state of the tab with the files on their way in both directions. On main.
class FileDropTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(brenvale::CountedListModel* fileTransfers READ fileTransfers CONSTANT)

public:
    /// All arguments must outlive the tab.
    FileDropTab(HistoryStore& history, WebSocketServer& server, FileViewer& fileViewer);
    ~FileDropTab() override;
    FileDropTab(const FileDropTab&) = delete;
    FileDropTab& operator=(const FileDropTab&) = delete;

    [[nodiscard]] FileTransferListModel* fileTransfers() { return &fileTransfers_; }

    Q_INVOKABLE void clearFileTransfers();
    Q_INVOKABLE void sendFiles(const QList<QUrl>& files);
    Q_INVOKABLE void showInFolder(const QUrl& file);

private:
    HistoryStore& history_;
    WebSocketServer& server_;
    FileViewer& fileViewer_;
    FileTransferListModel fileTransfers_;
};

} // namespace brenvale
