#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

// File contents as text, the way they travel in messages: the standard alphabet with '+', '/' and padding.
// Everything here may be called on any thread.

namespace brenvale {

/// How the bulk of the work is done. Every way gives the same result; only the tests have to choose.
enum class Base64Way : std::uint8_t { scalar, avx2 };

/// The fastest way that this processor offers.
[[nodiscard]] Base64Way fastestBase64Way();

/// The memory that decodeBase64 needs for a text of `textSize` bytes.
[[nodiscard]] constexpr std::size_t base64DecodedCapacity(std::size_t textSize) {
    return textSize / 4 * 3;
}

/// Decodes `text` to `out`, which must have room for base64DecodedCapacity(text.size()) bytes and not overlap
/// `text`. Gives the number of decoded bytes, or nothing where the text is refused; then `out` holds garbage,
/// as does what lies behind the decoded bytes within the capacity.
///
/// Bytes outside the alphabet are skipped wherever they stand, bits beyond the last whole byte are dropped. A
/// text is refused where a character of the alphabet follows a '=', or where characters of the alphabet and
/// '=' together are not a multiple of four. So "A===" and "====" decode to no bytes, and "A=" is refused.
[[nodiscard]] std::optional<std::size_t> decodeBase64(std::string_view text, char* out,
                                                      Base64Way way = fastestBase64Way());

/// Decodes text after text into memory that it keeps, so that equal chunks of a file cost one allocation.
class Base64Decoder {
public:
    Base64Decoder() = default;
    Q_DISABLE_COPY_MOVE(Base64Decoder)

    /// The bytes of `text` by the rules of decodeBase64. They hold until the next call.
    [[nodiscard]] std::optional<QByteArrayView> decode(std::string_view text);

    /// Gives the memory back.
    void release();

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t capacity_ = 0;
};

/// The length of `byteCount` bytes as base64.
[[nodiscard]] constexpr std::size_t base64EncodedSize(std::size_t byteCount) {
    return (byteCount + 2) / 3 * 4;
}

/// Writes `bytes` as base64 to `out`, exactly base64EncodedSize characters without line ends, and gives the
/// end of what was written. `out` must not overlap `bytes`.
char* encodeBase64(QByteArrayView bytes, char* out, Base64Way way = fastestBase64Way());

/// Adds `bytes` as base64 behind `text`. Reserve room in `text` beforehand to have no copy made.
void appendBase64(QByteArrayView bytes, QByteArray& text);

} // namespace brenvale
