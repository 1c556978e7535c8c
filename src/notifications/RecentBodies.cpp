#include "notifications/RecentBodies.h"

namespace brenvale {

namespace {

/// In a flood of notifications only those are kept that can still make a repeat, so that memory stays
/// bounded.
constexpr qsizetype floodSize = 1000;

bool isBlank(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

} // namespace

QString RecentBodies::bodyKey(const QString& body) {
    QStringView key(body);
    while (!key.isEmpty() && isBlank(key.front())) {
        key = key.sliced(1);
    }
    while (!key.isEmpty() && isBlank(key.back())) {
        key.chop(1);
    }
    return key.size() == body.size() ? body : key.toString();
}

std::optional<QString> RecentBodies::repeatedIdentifier(const QString& bodyKey, double now) const {
    const auto found = byBody_.find(bodyKey);
    if (found == byBody_.end() || now - (*found)->first >= dedupWindow) {
        return {};
    }
    return (*found)->second.identifier;
}

void RecentBodies::remember(const QString& bodyKey, const QString& identifier, double now) {
    if (const auto found = byBody_.find(bodyKey); found != byBody_.end()) {
        entries_.erase(*found);
        byBody_.erase(found);
    }
    byBody_.insert(bodyKey, entries_.emplace_hint(entries_.end(), now, Entry{bodyKey, identifier}));
    forgetOld(now);
}

void RecentBodies::forgetOld(double now) {
    while (!entries_.empty()) {
        const double limit = size() > floodSize ? dedupWindow : retention;
        const auto oldest = entries_.begin();
        if (now - oldest->first < limit) {
            return;
        }
        byBody_.remove(oldest->second.bodyKey);
        entries_.erase(oldest);
    }
}

} // namespace brenvale
