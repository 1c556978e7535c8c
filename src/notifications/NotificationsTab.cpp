#include "notifications/NotificationsTab.h"

#include "link/WebSocketServer.h"
#include "records/HistoryStore.h"
#include "records/RecordId.h"

namespace brenvale {

NotificationsTab::NotificationsTab(HistoryStore& history, WebSocketServer& server, const ContactNames& names)
    : history_(history), server_(server), items_(history, names) {
    connect(&items_, &CountedListModel::countChanged, this, &NotificationsTab::notificationCountTextChanged);
}

NotificationsTab::~NotificationsTab() = default;

QString NotificationsTab::notificationCountText() const {
    const int count = items_.count();
    return QString::number(count) +
           (count == 1 ? QStringLiteral(" notification") : QStringLiteral(" notifications"));
}

QString NotificationsTab::replyingTo() const {
    return replyingTo_ ? recordIdText(*replyingTo_) : QString();
}

void NotificationsTab::setReplyingTo(const std::optional<QUuid>& row) {
    if (row != replyingTo_) {
        replyingTo_ = row;
        emit replyingToChanged();
    }
}

void NotificationsTab::setReplyText(const QString& text) {
    if (text != replyText_) {
        replyText_ = text;
        emit replyTextChanged();
    }
}

void NotificationsTab::openReply(const QString& rowId) {
    setReplyingTo(QUuid::fromString(rowId));
}

void NotificationsTab::sendReply(const QString& rowId) {
    server_.sendReply(rowId, replyText_);
    setReplyingTo({});
    setReplyText({});
}

void NotificationsTab::cancelReply() {
    setReplyingTo({});
}

void NotificationsTab::clearNotifications() {
    history_.clear();
}

void NotificationsTab::refresh() {
    items_.refreshNames(); // and their times
}

} // namespace brenvale
