#include "platform/InternalNotifications.h"

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

QList<SmsRecord> log(int size) {
    return QList<SmsRecord>(size);
}

} // namespace

TEST(InternalNotifications, ReachTheObserversOfTheirName) {
    InternalNotifications center;
    std::vector<qsizetype> sizes;
    const auto sms = center.addObserver(InternalNotifications::smsHistoryUpdated, [&](const auto& object) {
        sizes.push_back(std::get<QList<SmsRecord>>(object).size());
    });
    const auto calls = center.addObserver(InternalNotifications::callHistoryUpdated,
                                          [](const auto&) { FAIL() << "of another name"; });
    center.post(InternalNotifications::smsHistoryUpdated, log(3));
    EXPECT_THAT(sizes, testing::ElementsAre(3));
}

TEST(InternalNotifications, AreLostWithoutAnObserver) {
    InternalNotifications center;
    center.post(InternalNotifications::smsHistoryUpdated, log(1));
    int calls = 0;
    auto observation =
        center.addObserver(InternalNotifications::smsHistoryUpdated, [&](const auto&) { ++calls; });
    observation.reset();
    center.post(InternalNotifications::smsHistoryUpdated, log(1));
    EXPECT_EQ(calls, 0);
}

TEST(InternalNotifications, AnObserverMayLeaveWhileItIsTold) {
    InternalNotifications center;
    int calls = 0;
    InternalNotifications::Observation observation;
    observation = center.addObserver(InternalNotifications::smsHistoryUpdated, [&](const auto&) {
        ++calls;
        observation.reset();
    });
    center.post(InternalNotifications::smsHistoryUpdated, log(1));
    center.post(InternalNotifications::smsHistoryUpdated, log(1));
    EXPECT_EQ(calls, 1);
}
