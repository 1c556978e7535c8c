#include "link/WebSocketServer.h"
#include "records/HistoryStore.h"
#include "records/RecordId.h"
#include "shell/SettingsView.h"

namespace brenvale {

QString SettingsView::notificationCountText() const {
    const int count = items_.count();
    return QString::number(count) +
           (count == 1 ? QStringLiteral(" notification") : QStringLiteral(" notifications"));
}

QString SettingsView::replyingTo() const {
    return replyingTo_ ? recordIdText(*replyingTo_) : QString();
}

void SettingsView::setReplyingTo(const std::optional<QUuid>& row) {
    if (row != replyingTo_) {
        replyingTo_ = row;
        emit replyingToChanged();
    }
}

void SettingsView::setReplyText(const QString& text) {
    if (text != replyText_) {
        replyText_ = text;
        emit replyTextChanged();
    }
}

void SettingsView::openReply(const QString& rowId) {
    setReplyingTo(QUuid::fromString(rowId));
}

void SettingsView::sendReply(const QString& rowId) {
    server_.sendReply(rowId, replyText_);
    setReplyingTo({});
    setReplyText({});
}

void SettingsView::cancelReply() {
    setReplyingTo({});
}

void SettingsView::clearNotifications() {
    history_.clear();
}

} // namespace brenvale
