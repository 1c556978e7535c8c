#pragma once

#include "records/ClipboardRecord.h"
#include "records/FileTransferRecord.h"
#include "records/NotifPayload.h"
#include "records/Published.h"
#include "records/RecordListModel.h"

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
