#include "records/CutToInteger.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using brenvale::cutToInteger;

namespace {

constexpr brenvale::CutTexts texts{.notFinite = "not finite", .tooHigh = "too high", .tooLow = "too low"};
constexpr double limit = 0x1p63;

} // namespace

TEST(CutToInteger, DropsTheFraction) {
    EXPECT_EQ(cutToInteger(12.9, texts), 12);
    EXPECT_EQ(cutToInteger(-12.9, texts), -12);
    EXPECT_EQ(cutToInteger(-0.5, texts), 0);
}

TEST(CutToInteger, TakesAllThatFits) {
    EXPECT_EQ(cutToInteger(-limit, texts), std::numeric_limits<qint64>::min());
    EXPECT_EQ(cutToInteger(std::nextafter(limit, 0), texts), std::numeric_limits<qint64>::max() - 1023);
}

TEST(CutToIntegerDeathTest, WhatDoesNotFitIsFatalWithItsText) {
    EXPECT_DEATH((void)cutToInteger(limit, texts), "^too high");
    EXPECT_DEATH((void)cutToInteger(std::nextafter(-limit, -2 * limit), texts), "^too low");
}

TEST(CutToIntegerDeathTest, WhatIsNotFiniteIsFatalWithItsText) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double number : {infinity, -infinity, std::nan("")}) {
        EXPECT_DEATH((void)cutToInteger(number, texts), "^not finite") << number;
    }
}
