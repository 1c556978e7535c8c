#pragma once

#include "records/ClipboardRecord.h"
#include "records/FileTransferRecord.h"
#include "records/NotifPayload.h"
#include "records/Published.h"
#include "records/RecordListModel.h"

#include <QTimer>

namespace brenvale {

class ContactNames;
class HistoryStore;

/// The three lists of the store as models for views. Each follows its list for as long as it lives and does
/// not keep the store alive; the store must outlive it. On main.
class NotifListModel final : public RecordListModel<NotifPayload> {
    Q_OBJECT

public:
    enum Role : int {
        RowIdRole = Qt::UserRole + 1, ///< the row's identity as a text
        BadgeRole,                    ///< one capital that stands for the app
        AppRole,
        ShownAppRole, ///< the app, or what stands for none
        TitleRole,
        ShownTitleRole, ///< the title, or the name of the number that it is
        BodyRole,
        TimeTextRole,
        KeyRole
    };
    Q_ENUM(Role)

    /// `names` must outlive the model.
    NotifListModel(HistoryStore& store, const ContactNames& names);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// To be called when the names may have changed.
    void refreshNames();

private:
    const ContactNames& names_;
    Subscription subscription_;
};

/// Progress comes with every piece of a file, faster than any view can draw: it is passed on at most once a
/// frame. All other changes are passed on at once, and with them the progress that waits.
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

class ClipboardListModel final : public RecordListModel<ClipboardRecord> {
    Q_OBJECT

public:
    enum Role : int {
        TextRole = Qt::UserRole + 1,
        DateRole,
        DateTextRole ///< date and time as shown
    };
    Q_ENUM(Role)

    explicit ClipboardListModel(HistoryStore& store);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    Subscription subscription_;
};

} // namespace brenvale
