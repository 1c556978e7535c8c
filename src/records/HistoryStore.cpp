#include "records/HistoryStore.h"

#include <algorithm>

namespace brenvale {

template <typename Record>
void HistoryStore::insertAtHead(Published<QList<Record>>& list, const Record& record) {
    list.update([&record](QList<Record>& rows) { rows.prepend(record); });
    if (list.get().size() > maxCount) {
        list.update([](QList<Record>& rows) { rows.remove(maxCount, rows.size() - maxCount); });
    }
}

void HistoryStore::add(const NotifPayload& payload) {
    insertAtHead(items, payload);
}

void HistoryStore::addFileTransfer(const FileTransferRecord& record) {
    insertAtHead(fileTransfers, record);
}

void HistoryStore::addClipboard(const QString& text) {
    insertAtHead(clipboardHistory, ClipboardRecord(text, QDateTime::currentDateTime()));
}

void HistoryStore::updateFileTransfer(const QUuid& id, double progress, bool isCompleted,
                                      const std::optional<QUrl>& url) {
    const auto& rows = fileTransfers.get();
    const auto row = std::ranges::find(rows, id, &FileTransferRecord::id);
    if (row == rows.end()) {
        return;
    }
    fileTransfers.update([&, index = row - rows.begin()](QList<FileTransferRecord>& transfers) {
        auto& record = transfers[index];
        record.progress = progress;
        record.isCompleted = isCompleted;
        if (url) {
            record.url = url;
        }
    });
}

void HistoryStore::clear() {
    items.set({});
}

void HistoryStore::clearClipboard() {
    clipboardHistory.set({});
}

void HistoryStore::clearFileTransfers() {
    fileTransfers.set({});
}

} // namespace brenvale
