#include "records/Published.h"

#include <gmock/gmock.h>

using brenvale::Published;
using testing::ElementsAre;

TEST(Published, AnObserverGetsTheCurrentValueFirst) {
    Published<int> value{7};
    std::vector<int> seen;
    const auto subscription = value.subscribe([&](int next) { seen.push_back(next); });
    EXPECT_THAT(seen, ElementsAre(7));
}

TEST(Published, EachWriteIsToldEvenIfItChangesNothing) {
    Published<int> value;
    std::vector<int> seen;
    const auto subscription = value.subscribe([&](int next) { seen.push_back(next); });
    value.set(1);
    value.set(1);
    value.update([](int& number) { number = 2; });
    EXPECT_THAT(seen, ElementsAre(0, 1, 1, 2));
    EXPECT_EQ(value.get(), 2);
}

TEST(Published, AnObserverIsToldBeforeTheWriteTakesEffect) {
    Published<int> value{1};
    int current = 0;
    const auto subscription = value.subscribe([&](int) { current = value.get(); });
    value.set(2);
    EXPECT_EQ(current, 1);
    EXPECT_EQ(value.get(), 2);
}

TEST(Published, AnObserverLeavesWithItsSubscription) {
    Published<int> value;
    int calls = 0;
    auto subscription = value.subscribe([&](int) { ++calls; });
    subscription.reset();
    value.set(1);
    EXPECT_EQ(calls, 1);
}

TEST(Published, AnObserverMayLeaveAndSubscribeWhileItIsTold) {
    Published<int> value;
    std::vector<int> late;
    brenvale::Subscription second;
    brenvale::Subscription first = value.subscribe([&](int next) {
        if (next == 1) {
            second = value.subscribe([&](int later) { late.push_back(later); });
            first.reset();
        }
    });
    value.set(1);
    value.set(2);
    EXPECT_THAT(late, ElementsAre(0, 2));
}
