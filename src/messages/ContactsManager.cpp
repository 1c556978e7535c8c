#include "messages/ContactsManager.h"

#include "messages/Addresses.h"

namespace brenvale {

ContactsManager& ContactsManager::shared() {
    static ContactsManager manager;
    return manager;
}

// NOLINTBEGIN(readability-convert-member-functions-to-static): they belong to an address book, once there is
// one

void ContactsManager::requestAccess(bool /*showDeniedAlert*/, const std::function<void(bool)>& completion) {
    if (completion) {
        completion(false);
    }
}

std::optional<QString> ContactsManager::cachedName(const QString& /*number*/) const {
    return std::nullopt;
}

QList<ContactMatch> ContactsManager::search(const QString& /*query*/) const {
    return {};
}

// NOLINTEND(readability-convert-member-functions-to-static)

QString ContactsManager::digitsOnly(const QString& text) {
    return decimalDigits(text);
}

} // namespace brenvale
