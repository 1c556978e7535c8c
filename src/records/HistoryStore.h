#pragma once

#include "records/ClipboardRecord.h"
#include "records/FileTransferRecord.h"
#include "records/IncomingCallInfo.h"
#include "records/NotifPayload.h"
#include "records/Published.h"
#include "records/SimInfo.h"

#include <QList>

#include <optional>

namespace brenvale {

/// What the phone link has brought in, in memory only: the link writes, the views observe. Observers are told
/// of each write just before it takes effect. The SMS and call logs are not here, the views keep them. On
/// main, every operation: the store has no lock and makes no hop of its own.
class HistoryStore {
public:
    Published<QList<NotifPayload>> items;                  ///< newest first
    Published<QList<SimInfo>> availableSIMs;               ///< in the phone's order
    Published<QList<FileTransferRecord>> fileTransfers;    ///< newest first
    Published<QList<ClipboardRecord>> clipboardHistory;    ///< newest first
    Published<std::optional<QString>> connectedRemoteIP;   ///< address of the connected phone
    Published<std::optional<QString>> connectedWifiName;   ///< the phone's Wi-Fi network
    Published<std::optional<QString>> connectedDeviceName; ///< the phone's name
    Published<std::optional<qint64>> batteryLevel;         ///< percent
    Published<bool> isCharging{false};
    Published<std::optional<IncomingCallInfo>> incomingCallInfo; ///< the ringing call while one rings

    /// Inserts at the head and drops the oldest row beyond 100. Equal records make rows of their own.
    void add(const NotifPayload& payload);
    void addFileTransfer(const FileTransferRecord& record);

    /// The same with a row made of `text` and the present time.
    void addClipboard(const QString& text);

    /// Changes the row of `id`, if there still is one, where it stands. Progress may go backwards and
    /// completion be taken back; without a `url` the row keeps the one it has.
    void updateFileTransfer(const QUuid& id, double progress, bool isCompleted,
                            const std::optional<QUrl>& url = std::nullopt);

    /// Empties `items` alone.
    void clear();
    void clearClipboard();

    /// Running transfers go on; their later updates find no row.
    void clearFileTransfers();

private:
    static constexpr qsizetype maxCount = 100;

    template <typename Record>
    static void insertAtHead(Published<QList<Record>>& list, const Record& record);
};

} // namespace brenvale
