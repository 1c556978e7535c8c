#include "link/WebSocketServer.h"
#include "messages/Addresses.h"
#include "platform/Clock.h"
#include "platform/CopyText.h"
#include "platform/Platform.h"
#include "shell/SettingsView.h"

namespace brenvale {

namespace {

/// A list of suggestions would be worth its room from this many digits on.
constexpr qsizetype digitsForSuggestions = 3;

} // namespace

void SettingsView::setContactQuery(const QString& query) {
    if (query == contactQuery_) {
        return;
    }
    contactQuery_ = query;
    looksNumeric_ = brenvale::looksNumeric(query);
    showSuggestions_ = looksNumeric_ && decimalDigits(query).size() >= digitsForSuggestions;
    filterConversations();
    emit contactQueryChanged();
    emit showsNoMessagesChanged();
}

bool SettingsView::showsNewNumberRow() const {
    return !contactQuery_.isEmpty() && looksNumeric_;
}

bool SettingsView::showsNoMessages() const {
    return conversations_.conversations().isEmpty() && contactQuery_.isEmpty();
}

void SettingsView::filterConversations() {
    filteredConversations_.setConversations(conversations_.filtered(contactQuery_, names_));
}

QString SettingsView::threadName() const {
    if (!activeRecipient_) {
        return {};
    }
    const auto* conversation = conversations_.find(*activeRecipient_);
    const bool isSpelledAlike = conversation != nullptr && conversation->displayAddress == *activeRecipient_;
    return contactName(*activeRecipient_, isSpelledAlike ? conversation->contactName : std::nullopt);
}

bool SettingsView::showsThreadAddress() const {
    return activeRecipient_ && threadName() != *activeRecipient_;
}

void SettingsView::setChatText(const QString& text) {
    if (text != chatText_) {
        chatText_ = text;
        emit chatTextChanged();
    }
}

void SettingsView::messagesTabAppeared() {
    server_.requestSmsHistory();
    server_.requestCallHistory();
}

void SettingsView::requestSmsHistory() {
    server_.requestSmsHistory();
}

void SettingsView::openConversation(const QString& address) {
    if (activeRecipient_ == address) {
        return;
    }
    activeRecipient_ = address;
    activeMessages_.showThread(conversations_.messages(address));
    emit activeRecipientChanged();
    emit threadNameChanged();
}

void SettingsView::openNewNumber() {
    openConversation(contactQuery_);
    setContactQuery({});
}

void SettingsView::sendChatMessage() {
    if (!activeRecipient_ || chatText_.isEmpty()) {
        return;
    }
    server_.sendSms(decimalDigits(*activeRecipient_), chatText_, selectedSimSlot_);
    // Shown at once: the next log of the phone takes its place.
    conversations_.append({.address = *activeRecipient_,
                           .name = {},
                           .body = chatText_,
                           .date = platform_.clock.now() * 1000,
                           .type = SmsRecord::sent});
    logChanged();
    setChatText({});
}

void SettingsView::copyMessage(const QString& body) {
    copyText(platform_.pasteboard, body);
}

void SettingsView::setPhoneSmsLog(const QList<SmsRecord>& log) {
    conversations_.setLog(log);
    logChanged();
}

void SettingsView::logChanged() {
    filterConversations();
    if (activeRecipient_) {
        activeMessages_.setMessages(conversations_.messages(*activeRecipient_));
    }
    emit threadNameChanged();
    emit showsNoMessagesChanged();
}

} // namespace brenvale
