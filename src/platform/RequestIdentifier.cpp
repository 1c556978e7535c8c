#include "platform/RequestIdentifier.h"

namespace brenvale {

RequestIdentifier::RequestIdentifier(QStringList parts)
    : parts_(std::move(parts)), digest_(textDigest(parts_)) {}

qsizetype RequestIdentifier::size() const {
    qsizetype size = parts_.size() - 1;
    for (const auto& part : parts_) {
        size += part.size();
    }
    return size;
}

} // namespace brenvale
