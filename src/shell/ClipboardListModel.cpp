#include "shell/ClipboardListModel.h"

#include "records/HistoryStore.h"
#include "records/Instant.h"

namespace brenvale {

ClipboardListModel::ClipboardListModel(HistoryStore& store)
    : subscription_(store.clipboardHistory.subscribe([this](const auto& entries) { setRecords(entries); })) {}

QVariant ClipboardListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& entry = records()[index.row()];
    switch (role) {
    case TextRole:
        return entry.text;
    case DateRole:
        return entry.date;
    case DateTextRole:
        return abbreviatedDateAndTime(entry.date);
    default:
        return {};
    }
}

QHash<int, QByteArray> ClipboardListModel::roleNames() const {
    return {{TextRole, "text"}, {DateRole, "date"}, {DateTextRole, "dateText"}};
}

} // namespace brenvale
