#pragma once

#include "records/NotifPayload.h"
#include "records/Published.h"
#include "records/RecordListModel.h"

namespace brenvale {

class ContactNames;
class HistoryStore;

/// The store's notifications as a model for views. It follows them for as long as it lives and does not keep
/// the store alive; the store must outlive it. On main.
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

} // namespace brenvale
