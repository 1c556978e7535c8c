#pragma once

#include "records/SmsRecord.h"

#include <QList>

#include <optional>

namespace brenvale {

/// One thread of the SMS log: the messages from and to one address, however it is written.
struct Conversation {
    QString id;                         ///< the form of the address that all its records share
    QString displayAddress;             ///< the address as the phone wrote it on the newest message
    std::optional<QString> contactName; ///< the first name among the records in the log's order; may be empty
    QList<int> messages;                ///< places in the log, oldest message first; never empty
    SmsRecord lastMessage;              ///< the newest
};

/// The threads of an SMS log, the one with the newest message first. Records of one date keep the log's
/// order, and so do threads whose newest messages are of one date. Pure.
[[nodiscard]] QList<Conversation> conversationsOf(const QList<SmsRecord>& log);

} // namespace brenvale
