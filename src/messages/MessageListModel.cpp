#include "messages/MessageListModel.h"

#include "messages/Characters.h"
#include "messages/MessageDates.h"

namespace brenvale {

QVariant MessageListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& message = records()[index.row()];
    switch (role) {
    case BodyRole:
        return message.body;
    case ShownBodyRole:
        return isCut(message) ? beginning(message.body, mostShown) : message.body;
    case IsCutRole:
        return isCut(message);
    case TimeTextRole:
        return formatDate(message.date);
    case IsSentRole:
        return message.type == SmsRecord::sent;
    default:
        return {};
    }
}

QHash<int, QByteArray> MessageListModel::roleNames() const {
    return {{BodyRole, "body"},
            {ShownBodyRole, "shownBody"},
            {IsCutRole, "isCut"},
            {TimeTextRole, "timeText"},
            {IsSentRole, "isSent"}};
}

bool MessageListModel::isCut(const SmsRecord& message) const {
    return message.body.size() > mostShown && !unfolded_.contains(identityOf(message));
}

void MessageListModel::showAll(int row) {
    if (row >= 0 && row < rowCount()) {
        unfolded_.insert(identityOf(records()[row]));
        emit dataChanged(index(row), index(row), {ShownBodyRole, IsCutRole});
    }
}

bool MessageListModel::differ(const SmsRecord& shown, const SmsRecord& next) const {
    return shown.body != next.body || shown.type != next.type;
}

} // namespace brenvale
