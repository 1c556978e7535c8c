#include "link/Json.h"
#include "link/WebSocketServer.h"
#include "notifications/NotificationManager.h"
#include "platform/Downloads.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "records/RecordId.h"
#include "transfer/LocalFile.h"

namespace brenvale {

namespace {

/// Adds `bytes` to the end of the file. Gives the file's new length, or nothing, and then the file has the
/// error.
std::optional<qint64> append(QFile& file, QByteArrayView bytes) {
    if (!file.seek(file.size())) {
        return {};
    }
    while (!bytes.isEmpty()) { // a disk that fills up takes a part first, and tells its error for the rest
        const auto written = file.write(bytes.data(), bytes.size());
        if (written <= 0) {
            return {};
        }
        bytes = bytes.sliced(written);
    }
    return file.pos();
}

} // namespace

void WebSocketServer::handleFileTransferStart(const JsonObject& json) {
    const auto fileName = json.string("fileName");
    if (!fileName) {
        return;
    }
    const auto fileSize = json.integer("fileSize").value_or(0);
    const auto id = makeRecordId();
    incoming_.activeTransfers.insert(*fileName, id);
    // The name is used as it came: it may lead into a folder below, and a file of that name is replaced.
    const auto path = platform_.downloads.folder() + u'/' + *fileName;
    auto file = createFile(path);
    if (!file) {
        platform_.log.line("[WebSocketServer] Failed to create file handle: " + file.error().toUtf8());
        return;
    }
    incoming_.incomingFileSessions.insert_or_assign(
        *fileName, FileWriteSession{
                       .handle = *std::move(file), .url = QUrl::fromLocalFile(path), .totalSize = fileSize});
    const FileTransferRecord record{
        .id = id, .fileName = *fileName, .fileSize = fileSize, .date = QDateTime::currentDateTime()};
    onMain([manager = notificationManager_, record](HistoryStore* store) {
        if (store != nullptr) {
            store->addFileTransfer(record);
        }
        manager->postFileProgress(record.fileName, 0, recordIdText(record.id));
    });
}

void WebSocketServer::handleFileChunk(const JsonObject& json) {
    const auto fileName = json.string("fileName");
    const auto fileData = json.utf8("fileData");
    if (!fileName || !fileData) {
        return;
    }
    const auto session = incoming_.incomingFileSessions.find(*fileName);
    if (session == incoming_.incomingFileSessions.end()) {
        return;
    }
    const auto bytes = incoming_.decoder.decode(*fileData);
    if (!bytes) {
        return;
    }
    link_.bytesForMain = static_cast<std::size_t>(fileName->size()); // the data stays here
    auto& file = *session->second.handle;
    const auto length = append(file, *bytes);
    if (!length) {
        platform_.log.line("[WebSocketServer] Error writing chunk: " + file.errorString().toUtf8());
        return;
    }
    const auto totalSize = session->second.totalSize;
    const double progress = totalSize > 0 ? static_cast<double>(*length) / static_cast<double>(totalSize) : 0;
    reportProgress(incoming_.activeTransfers.value(*fileName), progress); // without a row it finds none
    if (json.boolean("isLast").value_or(false) || json.utf8("action") == "file_transfer") {
        finalizeIncomingFile(*fileName);
    }
}

void WebSocketServer::reportProgress(const QUuid& id, double progress) {
    const auto report = incoming_.progressReports.find(id);
    if (report != incoming_.progressReports.end()) {
        *report = progress;
        return;
    }
    incoming_.progressReports.insert(id, {});
    postToMain([weak = weak_from_this(), id, progress](HistoryStore* store) {
        if (store != nullptr) {
            store->updateFileTransfer(id, progress, false);
        }
        if (const auto self = weak.lock()) {
            self->onQueue([id](WebSocketServer& server) { server.progressReported(id); });
        }
    });
}

void WebSocketServer::progressReported(const QUuid& id) {
    if (const auto newer = incoming_.progressReports.take(id)) {
        reportProgress(id, *newer);
    }
}

void WebSocketServer::finalizeIncomingFile(const QString& fileName) {
    const auto name = fileName.toUtf8();
    auto session = incoming_.incomingFileSessions.extract(fileName);
    if (session.empty()) {
        platform_.log.line("[WebSocketServer] Error: No active session found for file " + name +
                           " to finalize.");
        return;
    }
    auto& file = *session.mapped().handle;
    file.close();
    if (file.error() == QFileDevice::NoError) {
        platform_.log.line("[WebSocketServer] File handle closed for " + name);
    } else {
        platform_.log.line("[WebSocketServer] Error closing file handle for " + name + ": " +
                           file.errorString().toUtf8());
    }
    if (incoming_.incomingFileSessions.empty()) {
        incoming_.decoder.release();
    }
    const auto id = incoming_.activeTransfers.contains(fileName) ? incoming_.activeTransfers.take(fileName)
                                                                 : makeRecordId();
    incoming_.progressReports.remove(id);
    onMain([manager = notificationManager_, id, fileName, url = session.mapped().url](HistoryStore* store) {
        if (store != nullptr) {
            store->updateFileTransfer(id, 1.0, true, url);
        }
        manager->postSimple(QStringLiteral("File Received"),
                            QStringLiteral("Successfully received '") + fileName + u'\'');
        manager->postFileProgress(fileName, 1.0, recordIdText(id));
    });
}

} // namespace brenvale
