#include "platform/linux/input/PointerSteps.h"

#include <gtest/gtest.h>

#include <limits>

using namespace brenvale;

TEST(PointerSteps, FractionsAreCarried) {
    PointerSteps steps;
    QPoint sum;
    for (int i = 0; i < 100; ++i) {
        sum += steps.step({0.25, -0.1});
    }
    EXPECT_EQ(sum, QPoint(25, -10));
}

TEST(PointerSteps, AChangeOfDirectionUsesUpTheRest) {
    PointerSteps steps;
    EXPECT_EQ(steps.step({1.75, 0}), QPoint(1, 0));
    EXPECT_EQ(steps.step({-0.75, 0}), QPoint(0, 0));
    EXPECT_EQ(steps.step({-1, 0}), QPoint(-1, 0));
}

TEST(PointerSteps, NoStepIsLongerThanAScreen) {
    PointerSteps steps;
    EXPECT_EQ(steps.step({1e300, -1e9}), QPoint(32'000, -32'000));
    EXPECT_EQ(steps.step({1, 1}), QPoint(1, 1));
}

TEST(PointerSteps, WhatIsNoNumberIsNoMove) {
    PointerSteps steps;
    const auto infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(steps.step({infinity, std::numeric_limits<double>::quiet_NaN()}), QPoint());
    EXPECT_EQ(steps.step({2, 3}), QPoint(2, 3));
}
