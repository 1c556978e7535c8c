#include "link/WebSocketServer.h"
#include "notifications/NotificationManager.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "records/RecordId.h"
#include "transfer/FileChunkText.h"
#include "transfer/FileUrl.h"
#include "transfer/LocalFile.h"

namespace brenvale {

namespace {

constexpr qint64 chunkSize = 0x100000;

} // namespace

void WebSocketServer::sendFile(const QUrl& url) {
    onQueue([url](WebSocketServer& self) {
        const auto sent = self.queueFile(url);
        const auto name = lastPathComponent(url);
        if (sent) {
            self.notificationManager_->postSimple(QStringLiteral("File Sent"),
                                                  QStringLiteral("Successfully sent '") + name +
                                                      QStringLiteral("' to Android"));
            return;
        }
        self.platform_.log.line("[WebSocketServer] Failed to read/send file: " + sent.error().toUtf8());
        self.notificationManager_->postSimple(QStringLiteral("File Send Failed"),
                                              QStringLiteral("Could not read or send '") + name +
                                                  QStringLiteral("'. Error: ") + sent.error());
    });
}

std::expected<void, QString> WebSocketServer::queueFile(const QUrl& url) {
    const auto file = openFile(localPath(url));
    if (!file) {
        return std::unexpected(file.error());
    }
    const FileTransferRecord record{.id = makeRecordId(),
                                    .fileName = lastPathComponent(url),
                                    .url = url,
                                    .fileSize = (*file)->size(),
                                    .date = QDateTime::currentDateTime(),
                                    .isOutgoing = true};
    onStore([record](HistoryStore& store) { store.addFileTransfer(record); });
    send(fileTransferStartText(record.fileName, record.fileSize));
    return queueChunks(**file, record);
}

std::expected<void, QString> WebSocketServer::queueChunks(QFile& file, const FileTransferRecord& record) {
    QByteArray bytes(chunkSize, Qt::Uninitialized);
    qint64 offset = 0;
    // A file that shrinks meanwhile never reaches its size, and the link waits for it.
    while (offset < record.fileSize) {
        const auto length = file.read(bytes.data(), chunkSize);
        if (length < 0) {
            return std::unexpected(file.errorString());
        }
        if (length == 0) {
            continue;
        }
        const bool isLast = offset + length >= record.fileSize;
        // While this runs on the queue nobody connects: without a phone now the chunk would vanish.
        if (!link_.connections.empty()) {
            sendText(
                link_.spool.add(fileChunkText(record.fileName, QByteArrayView(bytes).first(length), isLast)));
        }
        offset += length;
        const double progress = static_cast<double>(offset) / static_cast<double>(record.fileSize);
        onStore([id = record.id, progress, isLast](HistoryStore& store) {
            store.updateFileTransfer(id, progress, isLast);
        });
    }
    return {};
}

} // namespace brenvale
