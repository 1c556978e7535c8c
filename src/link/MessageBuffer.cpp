#include "link/MessageBuffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace brenvale {

MessageBuffer::MessageBuffer(MessageBuffer&& other) noexcept
    : bytes_(std::move(other.bytes_)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

MessageBuffer& MessageBuffer::operator=(MessageBuffer&& other) noexcept {
    bytes_ = std::move(other.bytes_);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
}

void MessageBuffer::append(std::string_view text) {
    if (!text.empty()) {
        std::memcpy(prepare(text.size()).data(), text.data(), text.size());
        commit(text.size());
    }
}

MessageBuffer::mutable_buffers_type MessageBuffer::prepare(std::size_t count) {
    if (count > capacity_ - size_) {
        const auto capacity = std::max(size_ + count, 2 * size_);
        auto bytes = std::make_unique_for_overwrite<char[]>(capacity + padding);
        if (size_ > 0) {
            std::memcpy(bytes.get(), bytes_.get(), size_);
        }
        bytes_ = std::move(bytes);
        capacity_ = capacity;
    }
    return {bytes_.get() + size_, count};
}

void MessageBuffer::consume(std::size_t count) {
    count = std::min(count, size_);
    size_ -= count;
    if (size_ > 0) {
        std::memmove(bytes_.get(), bytes_.get() + count, size_);
    }
}

} // namespace brenvale
