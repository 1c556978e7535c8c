#include "platform/RequestIdentifier.h"

#include <QByteArray>

#include <iterator>

namespace brenvale {

namespace {

QStringList shortened(QStringList parts) {
    for (auto& part : parts) {
        if (part.size() > RequestIdentifier::longestPart) {
            const auto digest = textDigest({part});
            part = QString::fromLatin1(QByteArray(digest.data(), std::ssize(digest)).toHex());
        }
    }
    return parts;
}

} // namespace

RequestIdentifier::RequestIdentifier(QStringList parts)
    : parts_(parts.size() > 1 ? shortened(std::move(parts)) : std::move(parts)),
      digest_(textDigest(parts_)) {}

qsizetype RequestIdentifier::size() const {
    qsizetype size = parts_.size() - 1;
    for (const auto& part : parts_) {
        size += part.size();
    }
    return size;
}

} // namespace brenvale
