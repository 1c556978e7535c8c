#pragma once

#include "messages/ConversationListModel.h"
#include "messages/Conversations.h"
#include "messages/MessageListModel.h"
#include "messages/Sims.h"

#include <QObject>
#include <QStringList>

#include <optional>

namespace brenvale {

class ContactNames;
class WebSocketServer;
struct Platform;

/// The state of the tab with the phone's messages: the log, which is kept here and nowhere else, the search
/// in it, the thread that is open, and the draft of an answer. On main.
class SendSmsTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString contactQuery READ contactQuery WRITE setContactQuery NOTIFY contactQueryChanged)
    Q_PROPERTY(bool looksNumeric READ looksNumeric NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showSuggestions READ showSuggestions NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showsNewNumberRow READ showsNewNumberRow NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showsNoMessages READ showsNoMessages NOTIFY showsNoMessagesChanged)
    Q_PROPERTY(brenvale::CountedListModel* filteredConversations READ filteredConversations CONSTANT)
    Q_PROPERTY(bool hasActiveRecipient READ hasActiveRecipient NOTIFY activeRecipientChanged)
    Q_PROPERTY(QString activeRecipient READ activeRecipientText NOTIFY activeRecipientChanged)
    Q_PROPERTY(QString threadName READ threadName NOTIFY threadNameChanged)
    Q_PROPERTY(bool showsThreadAddress READ showsThreadAddress NOTIFY threadNameChanged)
    Q_PROPERTY(brenvale::CountedListModel* activeMessages READ activeMessages CONSTANT)
    Q_PROPERTY(QString chatText READ chatText WRITE setChatText NOTIFY chatTextChanged)
    Q_PROPERTY(brenvale::Sims* sims READ sims CONSTANT)

public:
    /// All arguments must outlive the tab.
    SendSmsTab(Platform& platform, WebSocketServer& server, const ContactNames& names, Sims& sims);
    ~SendSmsTab() override;
    SendSmsTab(const SendSmsTab&) = delete;
    SendSmsTab& operator=(const SendSmsTab&) = delete;

    [[nodiscard]] const QString& contactQuery() const { return contactQuery_; }
    void setContactQuery(const QString& query);
    [[nodiscard]] bool looksNumeric() const { return looksNumeric_; }
    [[nodiscard]] bool showSuggestions() const { return showSuggestions_; }
    [[nodiscard]] bool showsNewNumberRow() const;
    [[nodiscard]] bool showsNoMessages() const;
    [[nodiscard]] ConversationListModel* filteredConversations() { return &filteredConversations_; }

    [[nodiscard]] const std::optional<QString>& activeRecipient() const { return activeRecipient_; }
    [[nodiscard]] bool hasActiveRecipient() const { return activeRecipient_.has_value(); }
    [[nodiscard]] QString activeRecipientText() const { return activeRecipient_.value_or(QString()); }

    /// Whose thread is open, as the head of the thread shows it, and whether the address stands below.
    [[nodiscard]] QString threadName() const;
    [[nodiscard]] bool showsThreadAddress() const;
    [[nodiscard]] MessageListModel* activeMessages() { return &activeMessages_; }
    [[nodiscard]] const QString& chatText() const { return chatText_; }
    void setChatText(const QString& text);

    [[nodiscard]] Sims* sims() { return &sims_; }

    [[nodiscard]] const QList<SmsRecord>& phoneSmsLog() const { return conversations_.log(); }
    void setPhoneSmsLog(const QList<SmsRecord>& log);

    /// The tab comes on screen.
    Q_INVOKABLE void appeared();
    Q_INVOKABLE void requestSmsHistory();

    /// Opens the thread of `address`, which may have no message yet.
    Q_INVOKABLE void openConversation(const QString& address);

    /// Opens a thread with the number in the search field, as typed, and empties the field.
    Q_INVOKABLE void openNewNumber();

    /// Sends the draft to the open thread and shows it there at once. Does nothing without either.
    Q_INVOKABLE void sendChatMessage();

    /// Puts the text of a message on the clipboard.
    Q_INVOKABLE void copyMessage(const QString& body);

    /// Shows all names afresh, and looks for what is searched in them.
    void namesChanged();

    /// Shows the dates afresh: what was today when it was shown may be yesterday by now.
    void refreshDates();

    // No control shows or changes these.
    QStringList selectedRecipients;
    QString smsBody;
    QString smsStatus;
    QString smsStatusColor = QStringLiteral("secondary");

signals:
    void contactQueryChanged();
    void showsNoMessagesChanged();
    void activeRecipientChanged();
    void threadNameChanged();
    void chatTextChanged();

private:
    void logChanged();
    void filterConversations();

    Platform& platform_;
    WebSocketServer& server_;
    const ContactNames& names_;
    Sims& sims_;
    Conversations conversations_;
    ConversationListModel filteredConversations_;
    MessageListModel activeMessages_;
    QString contactQuery_;
    bool looksNumeric_ = false;
    bool showSuggestions_ = false;
    std::optional<QString> activeRecipient_;
    QString chatText_;
};

} // namespace brenvale
