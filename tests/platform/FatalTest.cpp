#include "platform/Fatal.h"

#include <gtest/gtest.h>

#include <csignal>

TEST(FatalDeathTest, TheTextGoesToStandardErrorAndTheProcessAborts) {
    EXPECT_EXIT(brenvale::fatal("it must not be"), testing::KilledBySignal(SIGABRT), "^it must not be\n$");
}
