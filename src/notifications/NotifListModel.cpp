#include "notifications/NotifListModel.h"

#include "messages/Characters.h"
#include "messages/ContactNames.h"
#include "records/HistoryStore.h"
#include "records/RecordId.h"

namespace brenvale {

namespace {

QString badgeOf(const NotifPayload& payload) {
    const auto& named = payload.app.isEmpty() ? payload.title : payload.app;
    return named.isEmpty() ? QStringLiteral("?") : firstCharacter(named).toUpper();
}

} // namespace

NotifListModel::NotifListModel(HistoryStore& store, const ContactNames& names)
    : names_(names), subscription_(store.items.subscribe([this](const auto& items) { setRecords(items); })) {}

QVariant NotifListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& payload = records()[index.row()];
    switch (role) {
    case RowIdRole:
        return recordIdText(payload.id);
    case BadgeRole:
        return badgeOf(payload);
    case AppRole:
        return payload.app;
    case ShownAppRole:
        return payload.app.isEmpty() ? QStringLiteral("Notification") : payload.app;
    case TitleRole:
        return payload.title;
    case ShownTitleRole:
        return payload.title.isEmpty() ? QString() : names_.contactName(payload.title);
    case BodyRole:
        return payload.body;
    case TimeTextRole:
        return payload.formattedTime();
    case KeyRole:
        return payload.key ? QVariant(*payload.key) : QVariant(); // undefined in QML
    default:
        return {};
    }
}

QHash<int, QByteArray> NotifListModel::roleNames() const {
    return {{RowIdRole, "rowId"},       {BadgeRole, "badge"},       {AppRole, "app"},
            {ShownAppRole, "shownApp"}, {TitleRole, "title"},       {ShownTitleRole, "shownTitle"},
            {BodyRole, "body"},         {TimeTextRole, "timeText"}, {KeyRole, "key"}};
}

void NotifListModel::refreshNames() {
    refreshRoles({ShownTitleRole, TimeTextRole});
}

} // namespace brenvale
