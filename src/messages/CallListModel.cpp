#include "messages/CallListModel.h"

#include "messages/ContactNames.h"
#include "messages/MessageDates.h"
#include "platform/Clock.h"
#include "records/Instant.h"

namespace brenvale {

namespace {

constexpr qint64 outgoing = 2;
constexpr qint64 missed = 3;

} // namespace

CallListModel::CallListModel(const ContactNames& names, const Clock& clock) : names_(names), clock_(clock) {}

QVariant CallListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& call = records()[index.row()];
    switch (role) {
    case NumberRole:
        return call.number;
    case ShownNameRole:
        return names_.contactName(call.number, call.name);
    case RelativeDateRole:
        return formatRelativeDate(call.date, instantOf(clock_.now() * 1000));
    case IsMissedRole:
        return call.type == missed;
    case IsOutgoingRole:
        return call.type == outgoing;
    default:
        return {};
    }
}

QHash<int, QByteArray> CallListModel::roleNames() const {
    return {{NumberRole, "number"},
            {ShownNameRole, "shownName"},
            {RelativeDateRole, "relativeDate"},
            {IsMissedRole, "isMissed"},
            {IsOutgoingRole, "isOutgoing"}};
}

void CallListModel::refresh() {
    refreshRoles({ShownNameRole, RelativeDateRole});
}

bool CallListModel::differ(const CallRecord& shown, const CallRecord& next) const {
    return shown.number != next.number || shown.name != next.name || shown.type != next.type;
}

} // namespace brenvale
