#include "link/JsonRepair.h"

#include <QByteArray>

#include <charconv>
#include <cstdint>
#include <optional>

namespace brenvale {

namespace {

constexpr std::string_view numberCharacters = "0123456789+-.eE";

/// The number as the parser can take it; empty where it can already, or where it is none.
std::string_view replacementNumber(std::string_view token, QByteArray& scratch) {
    const QByteArray number(token.data(), static_cast<qsizetype>(token.size()));
    const bool isInteger = token.find_first_of(".eE") == std::string_view::npos;
    bool fits = false;
    const double value = number.toDouble(&fits);
    if (!fits && value != 0) {
        return token.front() == '-' ? "-1.7976931348623157e308" : "1.7976931348623157e308";
    }
    if (!isInteger || !fits) {
        return {};
    }
    std::uint64_t whole = 0;
    const auto digits = token.substr(token.front() == '-' ? 1 : 0);
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), whole);
    const bool tooNegative = token.front() == '-' && whole > std::uint64_t{1} << 63;
    if (error != std::errc::result_out_of_range && !tooNegative) {
        return {};
    }
    scratch = number + ".0"; // a double, as which it is in range
    return {scratch.constData(), static_cast<std::size_t>(scratch.size())};
}

std::optional<unsigned> escapedUnit(std::string_view text) {
    unsigned unit = 0;
    if (text.size() < 6 || text[0] != '\\' || text[1] != 'u') {
        return {};
    }
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + 6, unit, 16);
    return end == text.data() + 6 ? std::optional(unit) : std::nullopt;
}

bool isHighSurrogate(unsigned unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}
bool isLowSurrogate(unsigned unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

/// Copies the escape at the head of `text` and returns its length.
std::size_t copyEscape(std::string_view text, MessageBuffer& out) {
    const auto first = escapedUnit(text);
    if (!first) {
        const auto length = std::min<std::size_t>(2, text.size());
        out.append(text.substr(0, length));
        return length;
    }
    if (isHighSurrogate(*first)) {
        const auto second = escapedUnit(text.substr(6));
        if (second && isLowSurrogate(*second)) {
            out.append(text.substr(0, 12));
            return 12;
        }
    }
    const bool isHalf = isHighSurrogate(*first) || isLowSurrogate(*first);
    out.append(isHalf ? "\\ufffd" : text.substr(0, 6));
    return 6;
}

std::size_t copyNumber(std::string_view text, MessageBuffer& out) {
    const auto token = text.substr(0, text.find_first_not_of(numberCharacters));
    QByteArray scratch;
    const auto replacement = replacementNumber(token, scratch);
    out.append(replacement.empty() ? token : replacement);
    return token.size();
}

} // namespace

MessageBuffer repairJson(std::string_view text) {
    MessageBuffer out;
    bool inString = false;
    while (!text.empty()) {
        const auto run = text.find_first_of(inString ? "\"\\" : "\"-0123456789");
        out.append(text.substr(0, run));
        if (run == std::string_view::npos) {
            break;
        }
        text.remove_prefix(run);
        if (text.front() == '"') {
            inString = !inString;
            out.append(text.substr(0, 1));
            text.remove_prefix(1);
        } else {
            text.remove_prefix(inString ? copyEscape(text, out) : copyNumber(text, out));
        }
    }
    return out;
}

} // namespace brenvale
