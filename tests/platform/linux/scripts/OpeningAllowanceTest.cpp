#include "platform/linux/scripts/OpeningAllowance.h"

#include <gtest/gtest.h>

using namespace brenvale;
using namespace std::chrono_literals;

namespace {

int takenOf(OpeningAllowance& allowance, int wanted, OpeningAllowance::Clock::time_point now) {
    int taken = 0;
    for (int i = 0; i < wanted; ++i) {
        taken += allowance.take(now) ? 1 : 0;
    }
    return taken;
}

} // namespace

TEST(OpeningAllowance, TenMayBeOpenedAtOnce) {
    OpeningAllowance allowance;
    EXPECT_EQ(takenOf(allowance, 10'000, OpeningAllowance::Clock::time_point(1h)), 10);
}

TEST(OpeningAllowance, OneMoreMayBeOpenedEachSecond) {
    OpeningAllowance allowance;
    const OpeningAllowance::Clock::time_point begin(1h);
    EXPECT_EQ(takenOf(allowance, 20, begin), 10);
    EXPECT_EQ(takenOf(allowance, 20, begin + 999ms), 0);
    EXPECT_EQ(takenOf(allowance, 20, begin + 1s), 1);
    EXPECT_EQ(takenOf(allowance, 20, begin + 4s), 3);
}

TEST(OpeningAllowance, AfterAPauseItIsTenAgainAndNotMore) {
    OpeningAllowance allowance;
    const OpeningAllowance::Clock::time_point begin(1h);
    EXPECT_EQ(takenOf(allowance, 20, begin), 10);
    EXPECT_EQ(takenOf(allowance, 20, begin + 24h), 10);
}

TEST(OpeningAllowance, WhoOpensOneASecondIsNeverRefused) {
    OpeningAllowance allowance;
    for (auto now = OpeningAllowance::Clock::time_point(1h); now.time_since_epoch() < 2h; now += 1s) {
        EXPECT_TRUE(allowance.take(now));
    }
}
