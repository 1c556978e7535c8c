#include "records/CutToInteger.h"

#include "platform/Fatal.h"

#include <cmath>

namespace brenvale {

qint64 cutToInteger(double number, const CutTexts& texts) {
    constexpr double limit = 0x1p63; // the first that is too high; its negative is the lowest that fits
    if (!std::isfinite(number)) {
        fatal(texts.notFinite);
    }
    if (number >= limit) {
        fatal(texts.tooHigh);
    }
    if (number < -limit) {
        fatal(texts.tooLow);
    }
    return static_cast<qint64>(number);
}

} // namespace brenvale
