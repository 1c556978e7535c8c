#pragma once

#include "link/MessageBuffer.h"

#include <string_view>

namespace brenvale {

/// The parser refuses two things that are JSON all the same: numbers beyond 64 bits, and escaped halves of
/// surrogate pairs, as a text cut in the middle of an emoji has them. This is `text` with the first replaced
/// by doubles (the mark where no double is large enough) and the second by the replacement
/// character. What is no JSON stays so. Pure.
[[nodiscard]] MessageBuffer repairJson(std::string_view text);

/// Whether a number of a parsed text is the mark of one that no double is large enough for: the largest
/// double, or the lowest. Pure.
[[nodiscard]] bool isOutOfRangeMark(double number);

} // namespace brenvale
