#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brenvale {

inline constexpr std::string_view base64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// What decodeBase64 has to give: its rules as they read, one character at a time.
inline std::optional<std::string> plainlyDecoded(std::string_view text) {
    std::size_t characters = 0;
    std::size_t pads = 0;
    std::string bytes;
    unsigned bits = 0;
    int bitCount = 0;
    for (const char character : text) {
        if (character == '=') {
            ++pads;
            continue;
        }
        const auto value = base64Alphabet.find(character);
        if (value == std::string_view::npos) {
            continue;
        }
        if (pads > 0) {
            return std::nullopt;
        }
        ++characters;
        bits = bits << 6 | static_cast<unsigned>(value);
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes += static_cast<char>(bits >> bitCount & 0xff);
        }
    }
    return (characters + pads) % 4 == 0 ? std::optional(bytes) : std::nullopt;
}

} // namespace brenvale
