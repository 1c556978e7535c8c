#pragma once

#include "records/FileTransferRecord.h"
#include "records/Published.h"
#include "records/RecordListModel.h"

#include <QTimer>

namespace brenvale {

class HistoryStore;

/// The store's file transfers as a model for views. It follows them for as long as it lives and does not keep
/// the store alive; the store must outlive it. Progress comes with every piece of a file, faster than any
/// view can draw: it is passed on at most once a frame. All other changes are passed on at once, and with
/// them the progress that waits. On main.
class FileTransferListModel final : public RecordListModel<FileTransferRecord> {
    Q_OBJECT

public:
    enum Role : int {
        FileNameRole = Qt::UserRole + 1,
        UrlRole,
        FileSizeRole,
        DateRole,
        IsOutgoingRole,
        ProgressRole,
        ProgressTextRole, ///< "50%"
        IsCompletedRole,
        StatusTextRole ///< what became of a completed one, its size and time
    };
    Q_ENUM(Role)

    explicit FileTransferListModel(HistoryStore& store);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] bool differ(const FileTransferRecord& shown, const FileTransferRecord& next) const override;

private:
    void follow(const QList<FileTransferRecord>& next);
    [[nodiscard]] bool isOnlyProgress(const QList<FileTransferRecord>& next) const;
    void showNow(const QList<FileTransferRecord>& next);

    QTimer frameEnd_{this};              ///< runs while progress waits, and at no other time
    QList<FileTransferRecord> upcoming_; ///< what the rows become then
    Subscription subscription_;
};

} // namespace brenvale
