#include "messages/Conversation.h"

#include "messages/Addresses.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace brenvale {

namespace {

/// The threads in the order of their first record, with the places of their records in the log's order.
QList<Conversation> grouped(const QList<SmsRecord>& log) {
    constexpr int none = -1;
    QList<Conversation> threads;
    QHash<QString, int> threadsById;
    QHash<QString, int> threadsBySpelling; // spares most records the way to the normal form
    for (int place = 0; place < log.size(); ++place) {
        const auto& record = log[place];
        int thread = threadsBySpelling.value(record.address, none);
        if (thread == none) {
            const auto id = normalizeAddress(record.address);
            thread = threadsById.value(id, static_cast<int>(threads.size()));
            if (thread == threads.size()) {
                threads.append({.id = id});
                threadsById.insert(id, thread);
            }
            threadsBySpelling.insert(record.address, thread);
        }
        auto& conversation = threads[thread];
        conversation.messages.append(place);
        if (!conversation.contactName) {
            conversation.contactName = record.name;
        }
    }
    return threads;
}

void bringIntoOrder(Conversation& thread, const QList<SmsRecord>& log) {
    const auto date = [&log](int place) {
        return log[place].date;
    };
    // Of several newest messages the first in the log gives the address, the last one is shown.
    thread.displayAddress = log[*std::ranges::max_element(thread.messages, {}, date)].address;
    std::ranges::sort(thread.messages, {}, [&date](int place) { return std::pair(date(place), place); });
    thread.lastMessage = log[thread.messages.last()];
}

} // namespace

QList<Conversation> conversationsOf(const QList<SmsRecord>& log) {
    auto threads = grouped(log);
    for (auto& thread : threads) {
        bringIntoOrder(thread, log);
    }
    std::ranges::sort(threads, {}, [](const Conversation& thread) {
        return std::pair(-thread.lastMessage.date, thread.messages.last());
    });
    return threads;
}

} // namespace brenvale
