#pragma once

#include <boost/asio/buffer.hpp>

#include <cstddef>
#include <memory>
#include <string_view>

namespace brenvale {

/// The bytes of one message as they arrive. It grows to the size that is asked for, never zeroes memory, and
/// always has `padding` readable bytes behind its contents, which the JSON parser wants. Movable; one owner,
/// one thread. Has the shape that Beast calls a dynamic buffer, so that a message is read straight into it.
class MessageBuffer {
public:
    using const_buffers_type = boost::asio::const_buffer;
    using mutable_buffers_type = boost::asio::mutable_buffer;

    static constexpr std::size_t padding = 64;

    MessageBuffer() = default;
    explicit MessageBuffer(std::string_view text) { append(text); }
    MessageBuffer(MessageBuffer&& other) noexcept;
    MessageBuffer& operator=(MessageBuffer&& other) noexcept;

    /// Adds `text` behind the contents.
    void append(std::string_view text);

    [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }
    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] std::size_t size() const { return size_; }

    // What Beast calls.
    [[nodiscard]] static std::size_t max_size() { return static_cast<std::size_t>(-1) / 2; }
    [[nodiscard]] std::size_t capacity() const { return capacity_; }
    [[nodiscard]] const_buffers_type data() const { return {bytes_.get(), size_}; }
    [[nodiscard]] const_buffers_type cdata() const { return data(); }
    [[nodiscard]] mutable_buffers_type prepare(std::size_t count);
    void commit(std::size_t count) { size_ += count; }
    void consume(std::size_t count);

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0; ///< without the padding
};

} // namespace brenvale
