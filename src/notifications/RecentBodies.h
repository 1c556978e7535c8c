#pragma once

#include "platform/RequestIdentifier.h"

#include <optional>
#include <vector>

namespace brenvale {

/// What was posted lately, by body text: the memory behind the de-duplication of forwarded notifications.
/// Times are seconds of a clock that is never set back. One thread.
class RecentBodies {
public:
    static constexpr double dedupWindow = 3.0; ///< seconds up to which a body counts as a repeat
    static constexpr double retention = 30.0;  ///< seconds for which a body is remembered

    /// The body as repeats are told by it: without Unicode space separators and tabs at its ends. Line breaks
    /// stay.
    [[nodiscard]] static QString bodyKey(const QString& body);

    /// The identifier of the last post of this body, if that is less than `dedupWindow` ago.
    [[nodiscard]] std::optional<RequestIdentifier> repeatedIdentifier(const QString& bodyKey,
                                                                      double now) const;

    /// Remembers a post and forgets those that are older than `retention`.
    void remember(const QString& bodyKey, const RequestIdentifier& identifier, double now);

    [[nodiscard]] qsizetype size() const { return std::ssize(posts_); }

private:
    struct Post {
        TextDigest body; ///< of the key: bodies may be long
        RequestIdentifier identifier;
        double date = 0;
    };

    std::vector<Post> posts_; ///< one for each body
};

} // namespace brenvale
