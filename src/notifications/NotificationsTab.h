#pragma once

#include "notifications/NotifListModel.h"

#include <QObject>
#include <QUuid>

#include <optional>

namespace brenvale {

class ContactNames;
class HistoryStore;
class WebSocketServer;

/// The state of the tab with the forwarded notifications and the line to answer one of them in. On main.
class NotificationsTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(brenvale::CountedListModel* items READ items CONSTANT)
    Q_PROPERTY(QString notificationCountText READ notificationCountText NOTIFY notificationCountTextChanged)
    Q_PROPERTY(QString replyingTo READ replyingTo NOTIFY replyingToChanged)
    Q_PROPERTY(QString replyText READ replyText WRITE setReplyText NOTIFY replyTextChanged)

public:
    /// All arguments must outlive the tab.
    NotificationsTab(HistoryStore& history, WebSocketServer& server, const ContactNames& names);
    ~NotificationsTab() override;
    NotificationsTab(const NotificationsTab&) = delete;
    NotificationsTab& operator=(const NotificationsTab&) = delete;

    [[nodiscard]] NotifListModel* items() { return &items_; }
    [[nodiscard]] QString notificationCountText() const;

    /// The `rowId` of the row whose reply line is open; empty for none.
    [[nodiscard]] QString replyingTo() const;
    [[nodiscard]] const QString& replyText() const { return replyText_; }
    void setReplyText(const QString& text);

    Q_INVOKABLE void openReply(const QString& rowId);
    Q_INVOKABLE void sendReply(const QString& rowId);
    Q_INVOKABLE void cancelReply();
    Q_INVOKABLE void clearNotifications();

    /// Shows the rows afresh: the names, or the day, may have changed.
    void refresh();

signals:
    void notificationCountTextChanged();
    void replyingToChanged();
    void replyTextChanged();

private:
    void setReplyingTo(const std::optional<QUuid>& row);

    HistoryStore& history_;
    WebSocketServer& server_;
    NotifListModel items_;
    std::optional<QUuid> replyingTo_;
    QString replyText_;
};

} // namespace brenvale
