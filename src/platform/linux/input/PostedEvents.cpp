#include "platform/linux/input/PostedEvents.h"

#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr std::size_t longestLane = 20'000;
constexpr qsizetype longestText = 1'000'000;

bool isOfPointer(const PostedEvent& event) {
    return std::holds_alternative<PointerMove>(event) || std::holds_alternative<PointerButton>(event);
}

qsizetype textLengthOf(const PostedEvent& event) {
    const auto* key = std::get_if<KeyEvent>(&event);
    return key != nullptr && key->text ? key->text->size() : 0;
}

} // namespace

PostedEvents::PostedEvents() : descriptor_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

PostedEvents::~PostedEvents() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void PostedEvents::add(PostedEvent event) {
    const std::scoped_lock lock(mutex_);
    if (isClosed_ || !fits(event)) {
        return;
    }
    textLength_ += textLengthOf(event);
    auto& lane = isOfPointer(event) ? pointer_ : keys_;
    lane.push_back({.number = count_++, .poster = std::this_thread::get_id(), .event = std::move(event)});
    wake();
}

/// Releases are taken in however full it is, and only of what went down: so they are bounded too.
bool PostedEvents::fits(const PostedEvent& event) {
    const bool isFull = (isOfPointer(event) ? pointer_ : keys_).size() >= longestLane;
    if (const auto* key = std::get_if<KeyEvent>(&event); key != nullptr && !key->text) {
        return fits(down_, key->keyCode, key->isDown, isFull);
    }
    if (const auto* button = std::get_if<PointerButton>(&event); button != nullptr && !button->isDown) {
        return pointer_.size() < 2 * longestLane;
    }
    if (const auto* system = std::get_if<SystemDefinedEvent>(&event)) {
        const auto half = systemKeyPressOf(*system);
        return half ? fits(systemDown_, half->key.evdevCode, half->isDown, isFull) : !isFull;
    }
    return !isFull && textLength_ + textLengthOf(event) <= longestText;
}

bool PostedEvents::fits(std::multiset<quint16>& down, quint16 key, bool isDown, bool isFull) {
    if (isDown) {
        if (!isFull) {
            down.insert(key);
        }
        return !isFull;
    }
    const auto press = down.find(key);
    if (press == down.end()) {
        return false;
    }
    down.erase(press);
    return true;
}

void PostedEvents::close() {
    const std::scoped_lock lock(mutex_);
    isClosed_ = true;
    keys_.clear();
    pointer_.clear();
    wake();
}

bool PostedEvents::isClosed() const {
    const std::scoped_lock lock(mutex_);
    return isClosed_;
}

bool PostedEvents::waitsForAny(const Entry& entry, const Lane& lane) {
    return std::ranges::any_of(lane, [&entry](const Entry& other) {
        return other.number < entry.number && other.poster == entry.poster;
    });
}

PostedEvent PostedEvents::takeFront(Lane& lane) {
    auto event = std::move(lane.front().event);
    lane.pop_front();
    return event;
}

std::optional<PostedEvent> PostedEvents::take() {
    const std::scoped_lock lock(mutex_);
    inHand_.reset();
    if (!pointer_.empty() && !waitsForAny(pointer_.front(), keys_)) {
        return takeFront(pointer_);
    }
    if (keys_.empty()) {
        return {};
    }
    inHand_ = keys_.front().poster;
    textLength_ -= textLengthOf(keys_.front().event);
    return takeFront(keys_);
}

std::optional<PostedEvent> PostedEvents::takeBeside() {
    const std::scoped_lock lock(mutex_);
    if (pointer_.empty() || pointer_.front().poster == inHand_ || waitsForAny(pointer_.front(), keys_)) {
        return {};
    }
    return takeFront(pointer_);
}

std::optional<QString> PostedEvents::takeTextBehind() {
    const std::scoped_lock lock(mutex_);
    if (keys_.empty() || keys_.front().poster != inHand_ || waitsForAny(keys_.front(), pointer_)) {
        return {};
    }
    auto* key = std::get_if<KeyEvent>(&keys_.front().event);
    if (key == nullptr || !key->text) {
        return {};
    }
    auto text = *std::move(key->text);
    textLength_ -= text.size();
    keys_.pop_front();
    return text;
}

void PostedEvents::wake() const {
    const quint64 one = 1;
    [[maybe_unused]] const auto written = ::write(descriptor_, &one, sizeof one);
}

void PostedEvents::acknowledge() const {
    quint64 count = 0;
    [[maybe_unused]] const auto got = ::read(descriptor_, &count, sizeof count);
}

} // namespace brenvale
