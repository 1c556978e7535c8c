#include "link/MainBacklog.h"

#include <utility>

namespace brenvale {

namespace {

constexpr std::size_t maxMessages = 1024;
constexpr std::size_t maxBytes = std::size_t{32} << 20;
/// Marks are sent long before the limit: main can then be known to keep up without a stop.
constexpr std::size_t partBeforeMark = 4;

} // namespace

void MainBacklog::posted(std::size_t bytes) {
    ++posted_.messages;
    posted_.bytes += bytes;
}

bool MainBacklog::isFull() const {
    return posted_.messages >= maxMessages || posted_.bytes >= maxBytes;
}

bool MainBacklog::takeMark() {
    const bool isWorthIt =
        posted_.messages >= maxMessages / partBeforeMark || posted_.bytes >= maxBytes / partBeforeMark;
    if (isMarked_ || !isWorthIt) {
        return false;
    }
    marked_ = posted_;
    isMarked_ = true;
    return true;
}

void MainBacklog::markRan() {
    posted_.messages -= marked_.messages;
    posted_.bytes -= marked_.bytes;
    isMarked_ = false;
}

bool MainBacklog::setWaiting(bool isWaiting) {
    return std::exchange(isWaiting_, isWaiting);
}

} // namespace brenvale
