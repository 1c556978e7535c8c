#pragma once

#include "link/MessageBuffer.h"

#include <string_view>

namespace brenvale {

/// The parser refuses two things that are JSON all the same: numbers beyond 64 bits, and escaped halves of
/// surrogate pairs, as a text cut in the middle of an emoji has them. This is `text` with the first replaced
/// by doubles (`outOfRangeNumber` where no double is large enough) and the second by the replacement
/// character. What is no JSON stays so. Pure.
[[nodiscard]] MessageBuffer repairJson(std::string_view text);

/// Stands for a number that fits no 64-bit type.
inline constexpr double outOfRangeNumber = 1.7976931348623157e308;

} // namespace brenvale
