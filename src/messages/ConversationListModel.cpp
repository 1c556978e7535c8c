#include "messages/ConversationListModel.h"

#include "messages/Characters.h"
#include "messages/ContactNames.h"
#include "messages/MessageDates.h"
#include "platform/Clock.h"
#include "records/Instant.h"

namespace brenvale {

namespace {

/// More than the widest row has room for.
constexpr qsizetype mostOfLine = 300;

} // namespace

ConversationListModel::ConversationListModel(const ContactNames& names, const Clock& clock)
    : names_(names), clock_(clock) {}

QVariant ConversationListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& conversation = records()[index.row()];
    const auto& address = conversation.displayAddress;
    switch (role) {
    case DisplayAddressRole:
        return address;
    case ShownNameRole:
        return names_.contactName(address, conversation.id, conversation.contactName);
    case InitialsRole:
        // Of the call log's name or the address, even where a message has a name of its own.
        return initials(names_.contactName(address, conversation.id, {}));
    case RelativeDateRole:
        return formatRelativeDate(conversation.lastMessage.date, instantOf(clock_.now() * 1000));
    case LastBodyRole:
        return beginning(conversation.lastMessage.body, mostOfLine).simplified();
    default:
        return {};
    }
}

QHash<int, QByteArray> ConversationListModel::roleNames() const {
    return {{DisplayAddressRole, "displayAddress"},
            {ShownNameRole, "shownName"},
            {InitialsRole, "initials"},
            {RelativeDateRole, "relativeDate"},
            {LastBodyRole, "lastBody"}};
}

void ConversationListModel::refresh() {
    refreshRoles({ShownNameRole, InitialsRole, RelativeDateRole});
}

bool ConversationListModel::differ(const Conversation& shown, const Conversation& next) const {
    return shown.displayAddress != next.displayAddress || shown.contactName != next.contactName ||
           shown.lastMessage.date != next.lastMessage.date || shown.lastMessage.body != next.lastMessage.body;
}

} // namespace brenvale
