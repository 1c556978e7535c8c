#pragma once

#include "records/ClipboardRecord.h"
#include "records/Published.h"
#include "records/RecordListModel.h"

namespace brenvale {

class HistoryStore;

/// The store's clipboard texts as a model for views. It follows them for as long as it lives and does not
/// keep the store alive; the store must outlive it. On main.
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
