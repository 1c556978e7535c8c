#include "platform/linux/scripts/PulseVolume.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace brenvale;
using namespace std::chrono_literals;

TEST(ChangedVolume, ChangesByTheDifferenceWithinNoneAndAll) {
    EXPECT_EQ(changedVolume(93, 5), 98);
    EXPECT_EQ(changedVolume(98, 5), 100);
    EXPECT_EQ(changedVolume(100, 5), 100);
    EXPECT_EQ(changedVolume(7, -5), 2);
    EXPECT_EQ(changedVolume(2, -5), 0);
    EXPECT_EQ(changedVolume(0, -5), 0);
}

TEST(ChangedVolume, WhatIsLouderThanAllCountsAsAll) {
    EXPECT_EQ(changedVolume(150, 5), 100);
    EXPECT_EQ(changedVolume(150, -5), 95);
}

TEST(OutputVolume, WithoutAServerIsAnError) {
    setenv("PULSE_SERVER", "unix:/nonexistent/pulse", 1);
    const auto error = changeOutputVolume(5, 5s);
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->isEmpty());
    unsetenv("PULSE_SERVER");
}
