#pragma once

#include "messages/Conversation.h"

#include <QHash>
#include <QStringList>

#include <vector>

namespace brenvale {

class ContactNames;

/// The phone's SMS log and the threads in it. The records are kept once; threads are places in the log.
class Conversations {
public:
    [[nodiscard]] const QList<SmsRecord>& log() const { return log_; }
    void setLog(const QList<SmsRecord>& log);
    void append(const SmsRecord& record);

    /// Newest thread first.
    [[nodiscard]] const QList<Conversation>& conversations() const { return conversations_; }

    /// The thread of `address`, however it is written; null where there is none.
    [[nodiscard]] const Conversation* find(const QString& address) const;

    /// The messages of `address`, oldest first.
    [[nodiscard]] QList<SmsRecord> messages(const QString& address) const;

    /// The conversations that hold `query` in their shown name, their address or any of their messages,
    /// whatever the case; all of them where it is blank. The texts in lower case are kept from one search to
    /// the next and go with a blank one.
    [[nodiscard]] QList<Conversation> filtered(const QString& query, const ContactNames& names);

private:
    void rebuild();
    [[nodiscard]] bool holds(int place, const QString& sought, const ContactNames& names);

    QList<SmsRecord> log_;
    QList<Conversation> conversations_;
    QHash<QString, int> places_;                 ///< of the conversations, by normal form of the address
    std::vector<QStringList> bodiesInLowerCase_; ///< of each conversation that was searched
};

} // namespace brenvale
