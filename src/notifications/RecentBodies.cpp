#include "notifications/RecentBodies.h"

#include <algorithm>

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

std::optional<RequestIdentifier> RecentBodies::repeatedIdentifier(const QString& bodyKey, double now) const {
    const auto post = std::ranges::find(posts_, textDigest({bodyKey}), &Post::body);
    if (post == posts_.end() || now - post->date >= dedupWindow) {
        return {};
    }
    return post->identifier;
}

void RecentBodies::remember(const QString& bodyKey, const RequestIdentifier& identifier, double now) {
    const auto body = textDigest({bodyKey});
    const double limit = size() >= floodSize ? dedupWindow : retention;
    std::erase_if(posts_, [&](const Post& post) { return post.body == body || now - post.date >= limit; });
    posts_.push_back({.body = body, .identifier = identifier, .date = now});
}

} // namespace brenvale
