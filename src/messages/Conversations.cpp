#include "messages/Conversations.h"

#include "messages/Addresses.h"
#include "messages/ContactNames.h"
#include "messages/LowerCase.h"

#include <algorithm>

namespace brenvale {

void Conversations::setLog(const QList<SmsRecord>& log) {
    log_ = log;
    rebuild();
}

void Conversations::append(const SmsRecord& record) {
    log_.append(record);
    rebuild();
}

void Conversations::rebuild() {
    bodiesInLowerCase_.clear();
    conversations_ = conversationsOf(log_);
    places_.clear();
    for (int place = 0; place < conversations_.size(); ++place) {
        places_.insert(conversations_[place].id, place);
    }
}

const Conversation* Conversations::find(const QString& address) const {
    const auto place = places_.constFind(normalizeAddress(address));
    return place == places_.constEnd() ? nullptr : &conversations_[*place];
}

QList<SmsRecord> Conversations::messages(const QString& address) const {
    QList<SmsRecord> messages;
    if (const auto* conversation = find(address)) {
        messages.reserve(conversation->messages.size());
        for (const int place : conversation->messages) {
            messages.append(log_[place]);
        }
    }
    return messages;
}

QList<Conversation> Conversations::filtered(const QString& query, const ContactNames& names) {
    const auto sought = trimmedBlanks(query).toLower();
    if (sought.isEmpty()) {
        bodiesInLowerCase_.clear();
        return conversations_;
    }
    bodiesInLowerCase_.resize(static_cast<std::size_t>(conversations_.size()));
    QList<Conversation> found;
    for (int place = 0; place < conversations_.size(); ++place) {
        if (holds(place, sought, names)) {
            found.append(conversations_[place]);
        }
    }
    return found;
}

bool Conversations::holds(int place, const QString& sought, const ContactNames& names) {
    const auto& conversation = conversations_[place];
    const auto& address = conversation.displayAddress;
    const auto name = names.contactName(address, conversation.id, conversation.contactName);
    if (name.toLower().contains(sought) || address.toLower().contains(sought)) {
        return true;
    }
    auto& bodies = bodiesInLowerCase_[static_cast<std::size_t>(place)];
    if (bodies.isEmpty()) {
        bodies.reserve(conversation.messages.size());
        for (const int message : conversation.messages) {
            bodies.append(lowerCase(log_[message].body));
        }
    }
    return std::ranges::any_of(bodies, [&sought](const QString& body) { return body.contains(sought); });
}

} // namespace brenvale
