#pragma once

#include "platform/TextDigest.h"

#include <QHashFunctions>
#include <QString>
#include <QStringList>

#include <utility>

namespace brenvale {

/// What names a request for a notification: a text, which may be joined from others by colons. It is compared
/// by a digest, and shares the parts with who has them, so that a text of any size costs no second copy where
/// identifiers are kept. Any thread.
class RequestIdentifier {
public:
    RequestIdentifier() : RequestIdentifier(QString()) {}
    RequestIdentifier(const QString& text) // NOLINT(google-explicit-constructor): any text is an identifier
        : RequestIdentifier(QStringList{text}) {}

    [[nodiscard]] static RequestIdentifier joined(QStringList parts) {
        return RequestIdentifier(std::move(parts));
    }

    /// The whole text, made anew.
    [[nodiscard]] QString text() const { return parts_.join(u':'); }

    /// Characters of the text, without making it.
    [[nodiscard]] qsizetype size() const;

    friend bool operator==(const RequestIdentifier& one, const RequestIdentifier& other) {
        return one.digest_ == other.digest_;
    }
    friend std::size_t qHash(const RequestIdentifier& identifier, std::size_t seed = 0) {
        return qHashBits(identifier.digest_.data(), identifier.digest_.size(), seed);
    }

private:
    explicit RequestIdentifier(QStringList parts);

    QStringList parts_;
    TextDigest digest_;
};

} // namespace brenvale
