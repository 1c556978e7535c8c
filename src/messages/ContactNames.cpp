#include "messages/ContactNames.h"

#include "messages/Addresses.h"

namespace brenvale {

void ContactNames::setCallLog(const QList<CallRecord>& calls) {
    names_.clear();
    for (const auto& call : calls) {
        if (const auto number = normalizeAddress(call.number); !names_.contains(number)) {
            names_.insert(number, call.name.value_or(QString()));
        }
    }
}

QString ContactNames::contactName(const QString& address, const std::optional<QString>& providedName) const {
    return contactName(address, normalizeAddress(address), providedName);
}

QString ContactNames::contactName(const QString& address, const QString& normalizedAddress,
                                  const std::optional<QString>& providedName) const {
    if (providedName && !providedName->isEmpty()) {
        return *providedName;
    }
    const auto name = names_.value(normalizedAddress);
    return name.isEmpty() ? address : name;
}

} // namespace brenvale
