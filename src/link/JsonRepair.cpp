#include "link/JsonRepair.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

namespace brenvale {

namespace {

/// The parser takes no infinity; this text is the largest double, exactly.
constexpr auto outOfRangeMark = "1.7976931348623157e308";

constexpr std::string_view numberCharacters = "0123456789+-.eE";

std::string_view skipDigits(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of("0123456789"), text.size()));
}

/// Whether `token` is a number in JSON's grammar (RFC 8259), which is stricter than the C library's.
bool isJsonNumber(std::string_view token) {
    auto rest = token.substr(token.starts_with('-') ? 1 : 0);
    const auto needDigits = [&rest] {
        const auto behind = skipDigits(rest);
        return std::exchange(rest, behind).size() > behind.size();
    };
    const bool hasLeadingZero = rest.size() > 1 && rest[0] == '0' && rest[1] >= '0' && rest[1] <= '9';
    if (hasLeadingZero || !needDigits()) {
        return false;
    }
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        if (!needDigits()) {
            return false;
        }
    }
    if (rest.starts_with('e') || rest.starts_with('E')) {
        rest.remove_prefix(1);
        rest.remove_prefix(rest.starts_with('+') || rest.starts_with('-') ? 1 : 0);
        if (!needDigits()) {
            return false;
        }
    }
    return rest.empty();
}

/// Reads a number as the C locale has it, infinite where no double is large enough; nothing where it is none.
std::optional<double> readNumber(const QByteArray& token) {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    char* end = nullptr;
    const double value = strtod_l(token.constData(), &end, plain);
    return end == token.constEnd() ? std::optional(value) : std::nullopt;
}

bool fitsAnInteger(std::string_view token) {
    const bool isNegative = token.front() == '-';
    std::uint64_t whole = 0;
    const auto digits = token.substr(isNegative ? 1 : 0);
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), whole);
    const bool isTooLow = isNegative && whole > std::uint64_t{1} << 63;
    return error != std::errc::result_out_of_range && !isTooLow;
}

/// The number as the parser can take it; empty where it can already, or where it is none.
QByteArray replacementNumber(std::string_view token) {
    const QByteArray number(token.data(), static_cast<qsizetype>(token.size()));
    const auto value = isJsonNumber(token) ? readNumber(number) : std::nullopt;
    if (!value) {
        return {};
    }
    if (std::isinf(*value)) {
        return QByteArray(*value < 0 ? "-" : "") + outOfRangeMark;
    }
    if (token.find_first_of(".eE") != std::string_view::npos || fitsAnInteger(token)) {
        return {};
    }
    constexpr double lowestInteger = -0x1p63;
    // Rounded to a double, a number just below the lowest integer would become that integer.
    return *value == lowestInteger ? QByteArray("-9223372036854777856.0") : number + ".0";
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
    const auto replacement = replacementNumber(token);
    out.append(replacement.isEmpty()
                   ? token
                   : std::string_view(replacement.constData(), static_cast<std::size_t>(replacement.size())));
    return token.size();
}

} // namespace

bool isOutOfRangeMark(double number) {
    return std::abs(number) == std::numeric_limits<double>::max();
}

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
