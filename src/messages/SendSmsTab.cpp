#include "messages/SendSmsTab.h"

#include "link/WebSocketServer.h"
#include "messages/Addresses.h"
#include "messages/ContactNames.h"
#include "platform/Clock.h"
#include "platform/CopyText.h"
#include "platform/Platform.h"

namespace brenvale {

namespace {

/// A list of suggestions would be worth its room from this many digits on.
constexpr qsizetype digitsForSuggestions = 3;

} // namespace

SendSmsTab::SendSmsTab(Platform& platform, WebSocketServer& server, const ContactNames& names, Sims& sims)
    : platform_(platform),
      server_(server),
      names_(names),
      sims_(sims),
      filteredConversations_(names, platform.clock) {}

SendSmsTab::~SendSmsTab() = default;

void SendSmsTab::setContactQuery(const QString& query) {
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

bool SendSmsTab::showsNewNumberRow() const {
    return !contactQuery_.isEmpty() && looksNumeric_;
}

bool SendSmsTab::showsNoMessages() const {
    return conversations_.conversations().isEmpty() && contactQuery_.isEmpty();
}

void SendSmsTab::filterConversations() {
    filteredConversations_.setConversations(conversations_.filtered(contactQuery_, names_));
}

QString SendSmsTab::threadName() const {
    if (!activeRecipient_) {
        return {};
    }
    const auto* conversation = conversations_.find(*activeRecipient_);
    const bool isSpelledAlike = conversation != nullptr && conversation->displayAddress == *activeRecipient_;
    return names_.contactName(*activeRecipient_, isSpelledAlike ? conversation->contactName : std::nullopt);
}

bool SendSmsTab::showsThreadAddress() const {
    return activeRecipient_ && threadName() != *activeRecipient_;
}

void SendSmsTab::setChatText(const QString& text) {
    if (text != chatText_) {
        chatText_ = text;
        emit chatTextChanged();
    }
}

void SendSmsTab::appeared() {
    server_.requestSmsHistory();
    server_.requestCallHistory();
}

void SendSmsTab::requestSmsHistory() {
    server_.requestSmsHistory();
}

void SendSmsTab::openConversation(const QString& address) {
    if (activeRecipient_ == address) {
        return;
    }
    activeRecipient_ = address;
    activeMessages_.showThread(conversations_.messages(address));
    emit activeRecipientChanged();
    emit threadNameChanged();
}

void SendSmsTab::openNewNumber() {
    openConversation(contactQuery_);
    setContactQuery({});
}

void SendSmsTab::sendChatMessage() {
    if (!activeRecipient_ || chatText_.isEmpty()) {
        return;
    }
    server_.sendSms(decimalDigits(*activeRecipient_), chatText_, sims_.selectedSimSlot());
    // Shown at once: the next log of the phone takes its place.
    conversations_.append({.address = *activeRecipient_,
                           .name = {},
                           .body = chatText_,
                           .date = platform_.clock.now() * 1000,
                           .type = SmsRecord::sent});
    logChanged();
    setChatText({});
}

void SendSmsTab::copyMessage(const QString& body) {
    copyText(platform_.pasteboard, body);
}

void SendSmsTab::namesChanged() {
    if (!contactQuery_.isEmpty()) {
        filterConversations();
    }
    filteredConversations_.refresh();
    emit threadNameChanged();
}

void SendSmsTab::refreshDates() {
    filteredConversations_.refresh();
}

void SendSmsTab::setPhoneSmsLog(const QList<SmsRecord>& log) {
    conversations_.setLog(log);
    logChanged();
}

void SendSmsTab::logChanged() {
    filterConversations();
    if (activeRecipient_) {
        activeMessages_.setMessages(conversations_.messages(*activeRecipient_));
    }
    emit threadNameChanged();
    emit showsNoMessagesChanged();
}

} // namespace brenvale
