#pragma once

#include <QtGlobal>

namespace brenvale {

/// The texts that end the process where a number can't be made an integer.
struct CutTexts {
    const char* notFinite;
    const char* tooHigh;
    const char* tooLow;
};

/// `number` with its fraction cut off. One that is not finite, or that no 64-bit integer holds, is fatal with
/// its text. Any thread.
[[nodiscard]] qint64 cutToInteger(double number, const CutTexts& texts);

} // namespace brenvale
