#include "fakes/TestServer.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

/// What happens on the main thread, in order, in a few words.
struct CallEvents : testing::Test {
    CallEvents() { test.phone = test.connectPhone(); }

    TestServer test;
    std::vector<std::string> events;
    Subscription ringing =
        test.store->incomingCallInfo.subscribe([this, isFirst = true](const auto& info) mutable {
            if (!std::exchange(isFirst, false)) {
                events.push_back(info ? "rings " + info->number.toStdString() : "silent");
            }
        });
    InternalNotifications::Observation durations =
        test.fake.internalNotifications.addObserver(u"CallDurationUpdated", [this](const auto& object) {
            events.push_back(std::to_string(std::get<qint64>(object)));
        });
};

} // namespace

TEST_F(CallEvents, EachIsLoggedAndSoIsTheBanner) {
    test.receive(R"({"action":"call_update","duration":3})");
    test.receive(R"({"action":"incoming_call","number":"+49 17"})");
    EXPECT_THAT(test.dispatchLog(), ElementsAre("[WebSocketServer] Call Event: call_update",
                                                "[WebSocketServer] Call Event: incoming_call",
                                                "[WebSocketServer] Setting Banner Info: +49 17"));
}

TEST_F(CallEvents, ARingingCallIsStoredAnewEachTime) {
    test.receive(R"({"action":"incoming_call","number":"1"})");
    test.receive(R"({"action":"call_state_changed","state":"RINGING","number":"1","name":"Ann"})");
    EXPECT_THAT(events, ElementsAre("rings 1", "rings 1"));
    EXPECT_EQ(test.store->incomingCallInfo.get()->name, QStringLiteral("Ann"));
}

TEST_F(CallEvents, TheStoreIsWrittenBeforeTheDurationIsPosted) {
    test.receive(R"({"action":"incoming_call","number":"1","duration":0})");
    test.receive(R"({"action":"call_state_changed","state":"OFFHOOK","duration":-1})");
    EXPECT_THAT(events, ElementsAre("rings 1", "0", "silent", "-1"));
}

TEST_F(CallEvents, TheEndClearsTheStoreAndPostsMinusOneEachTime) {
    test.receive(R"({"action":"incoming_call","number":"1"})");
    test.receive(R"({"action":"call_ended","duration":70})");
    test.receive(R"({"action":"call_state_changed","state":"IDLE"})");
    EXPECT_THAT(events, ElementsAre("rings 1", "silent", "-1", "silent", "-1"));
    EXPECT_FALSE(test.store->incomingCallInfo.get().has_value());
}

TEST_F(CallEvents, ARingWithoutANumberLeavesTheStoreAlone) {
    test.receive(R"({"action":"incoming_call","duration":4})");
    EXPECT_THAT(events, ElementsAre("4"));
}

TEST_F(CallEvents, TheEndIsPostedWithoutAStoreToo) {
    test.store.reset();
    test.receive(R"({"action":"call_ended"})");
    EXPECT_THAT(events, ElementsAre("-1"));
}

TEST_F(CallEvents, TheEndIsPostedEvenIfTheServerGoesBeforeTheStepRuns) {
    test.phone->deliver(R"({"action":"call_ended"})");
    test.queue.run();
    test.server.reset();
    test.main.run();
    EXPECT_THAT(events, ElementsAre("-1"));
}

TEST(CallEventsDeathTest, ADurationBeyond64BitsEndsTheProcess) {
    TestServer test;
    test.phone = test.connectPhone();
    EXPECT_DEATH(test.receive(R"({"action":"call_update","duration":1e300})"),
                 "Double value cannot be converted to Int because the result would be greater than Int.max");
}
