#include "fakes/TestServer.h"

#include <gmock/gmock.h>

#include <string>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QByteArray notADictionary = "[WebSocketServer] Error: Received data is not a valid JSON dictionary.";

/// What the observers of the logs are told.
template <typename Record>
struct LogObserver {
    LogObserver(TestServer& test, QStringView name)
        : observation(test.fake.internalNotifications.addObserver(
              name, [this](const auto& object) { logs.push_back(std::get<QList<Record>>(object)); })) {}

    std::vector<QList<Record>> logs;
    InternalNotifications::Observation observation;
};

} // namespace

TEST(Dispatch, WhatIsNoJsonIsLoggedWithItsSize) {
    TestServer test;
    test.receive("{bad json");
    ASSERT_EQ(test.dispatchLog().size(), 1);
    EXPECT_TRUE(test.dispatchLog()[0].startsWith("[WebSocketServer] JSON parsing failed: "));
    EXPECT_TRUE(test.dispatchLog()[0].endsWith(". Payload size: 9 bytes"));
}

TEST(Dispatch, WhatIsNoObjectIsLogged) {
    for (const std::string_view text : {"[]", "\"a\"", "12", "true", "false", "null", "1e999"}) {
        TestServer test;
        test.receive(text);
        EXPECT_THAT(test.dispatchLog(), ElementsAre(notADictionary)) << text;
    }
}

TEST(Dispatch, ObjectsThatMeanNothingAreIgnoredWithoutALog) {
    TestServer test;
    for (const std::string_view text :
         {"{}", R"({"title":"t"})", R"({"action":"unknown"})",
          R"({"action":"unknown","app":"a","title":"t"})", R"({"action":"Clipboard","text":"t"})",
          R"({"action":"","app":"a"})", R"({"action":7})", R"({"action":null,"title":"t"})"}) {
        test.receive(text);
    }
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
    EXPECT_TRUE(test.store->items.get().isEmpty());
    EXPECT_THAT(test.fake.userNotificationCenter.added, IsEmpty());
    EXPECT_THAT(test.fake.pasteboard.calls, IsEmpty());
}

TEST(Dispatch, ABadMessageDoesNotEndTheLoop) {
    TestServer test;
    test.receive("{bad");
    test.receive(R"({"action":"connected","deviceName":"Pixel"})");
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(Dispatch, NothingReachesTheStoreButByTheMainQueue) {
    TestServer test;
    test.phone = test.connectPhone();
    test.phone->deliver(R"({"action":"connected","deviceName":"Pixel"})");
    test.queue.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
    test.main.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(Dispatch, ANumberBeyond64BitsDoesNotHarmTheRest) {
    TestServer test;
    test.receive(R"({"action":"connected","deviceName":"Pixel","uptime":99999999999999999999,"x":1e999})");
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(Dispatch, AMessageOf100MegabytesIsRead) {
    TestServer test;
    test.receive(R"({"app":"a","body":")" + std::string(std::size_t{100} << 20, 'x') + "\"}");
    ASSERT_EQ(test.store->items.get().size(), 1);
    EXPECT_EQ(test.store->items.get()[0].body.size(), qsizetype{100} << 20);
}

TEST(Connected, ANameIsStored) {
    TestServer test;
    test.receive(R"({"action":"connected","deviceName":"Pixel 7"})");
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel 7"));
}

TEST(Connected, WithoutANameNothingChanges) {
    TestServer test;
    test.receive(R"({"action":"connected","deviceName":"Pixel"})");
    for (const std::string_view text :
         {R"({"action":"connected"})", R"({"action":"connected","deviceName":""})",
          R"({"action":"connected","deviceName":7})", R"({"action":"connected","deviceName":null})"}) {
        test.receive(text);
        EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel")) << text;
    }
}

TEST(DeviceInfo, BothNamesAreIndependent) {
    TestServer test;
    test.receive(R"({"action":"device_info","wifiName":"Home","deviceName":"Pixel"})");
    test.receive(R"({"action":"device_info","wifiName":"Work"})");
    EXPECT_EQ(test.store->connectedWifiName.get(), QStringLiteral("Work"));
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
    test.receive(R"({"action":"device_info","wifiName":1,"deviceName":"Nexus"})");
    EXPECT_EQ(test.store->connectedWifiName.get(), QStringLiteral("Work"));
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Nexus"));
}

TEST(DeviceInfo, AnEmptyWifiNameIsStoredAndAnEmptyDeviceNameIsNot) {
    TestServer test;
    test.receive(R"({"action":"device_info","wifiName":"Home","deviceName":"Pixel"})");
    test.receive(R"({"action":"device_info","wifiName":"","deviceName":""})");
    EXPECT_EQ(test.store->connectedWifiName.get(), QString());
    EXPECT_TRUE(test.store->connectedWifiName.get().has_value());
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(SmsHistory, TheWholeLogIsAnnounced) {
    TestServer test;
    const LogObserver<SmsRecord> observer(test, u"SmsHistoryUpdated");
    test.receive(R"({"action":"sms_history","messages":[{"address":"1","body":"b","date":5,"type":2},{}]})");
    ASSERT_EQ(observer.logs.size(), 1U);
    ASSERT_EQ(observer.logs[0].size(), 2);
    EXPECT_EQ(observer.logs[0][0].body, QStringLiteral("b"));
    EXPECT_EQ(observer.logs[0][1].type, 1);
}

TEST(SmsHistory, AnEmptyLogIsAnnounced) {
    TestServer test;
    const LogObserver<SmsRecord> observer(test, u"SmsHistoryUpdated");
    test.receive(R"({"action":"sms_history","messages":[]})");
    ASSERT_EQ(observer.logs.size(), 1U);
    EXPECT_TRUE(observer.logs[0].isEmpty());
}

TEST(SmsHistory, WhatDoesNotDecodeIsIgnoredAsAWhole) {
    TestServer test;
    const LogObserver<SmsRecord> observer(test, u"SmsHistoryUpdated");
    for (const std::string_view text :
         {R"({"action":"sms_history"})", R"({"action":"sms_history","messages":null})",
          R"({"action":"sms_history","messages":{}})", R"({"action":"sms_history","messages":[1]})",
          R"({"action":"sms_history","messages":[{"body":"good"},{"date":"5"}]})"}) {
        test.receive(text);
    }
    EXPECT_THAT(observer.logs, IsEmpty());
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST(CallHistory, TheWholeLogIsAnnouncedOrNothing) {
    TestServer test;
    const LogObserver<CallRecord> observer(test, u"CallHistoryUpdated");
    test.receive(R"({"action":"call_history","calls":[{"number":"1","date":5,"duration":6,"type":3}]})");
    test.receive(R"({"action":"call_history","calls":[{"number":"1","date":5,"type":3}]})");
    ASSERT_EQ(observer.logs.size(), 1U);
    ASSERT_EQ(observer.logs[0].size(), 1);
    EXPECT_EQ(observer.logs[0][0].duration, 6);
}

TEST(SimInfo, TheListIsReplaced) {
    TestServer test;
    test.receive(R"({"action":"sim_info","sims":[{"slot":0,"carrier":"A"},{"slot":1,"carrier":"B"}]})");
    EXPECT_EQ(test.store->availableSIMs.get(),
              (QList<SimInfo>{{0, QStringLiteral("A")}, {1, QStringLiteral("B")}}));
    test.receive(R"({"action":"sim_info","sims":[{"slot":0}]})");
    EXPECT_EQ(test.store->availableSIMs.get().size(), 2) << "what does not decode leaves the list";
    test.receive(R"({"action":"sim_info","sims":[]})");
    EXPECT_TRUE(test.store->availableSIMs.get().isEmpty());
}

TEST(Clipboard, TheTextReachesPasteboardHistoryAndUser) {
    TestServer test;
    test.receive(R"({"action":"clipboard","text":"copied \"it\""})");
    EXPECT_EQ(test.fake.pasteboard.calls,
              (QStringList{QStringLiteral("clear"), QStringLiteral("set:copied \"it\"")}));
    ASSERT_EQ(test.store->clipboardHistory.get().size(), 1);
    EXPECT_EQ(test.store->clipboardHistory.get()[0].text, QStringLiteral("copied \"it\""));
    ASSERT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
    const auto& content = test.fake.userNotificationCenter.added[0].content;
    EXPECT_EQ(content.title, QStringLiteral("Clipboard Synced"));
    EXPECT_EQ(content.body, QStringLiteral("Text from Android copied to your Mac clipboard."));
    EXPECT_TRUE(content.hasDefaultSound);
    EXPECT_TRUE(content.categoryIdentifier.isEmpty());
}

TEST(Clipboard, AnEmptyTextAndARepeatGoThroughAllTheSame) {
    TestServer test;
    test.receive(R"({"action":"clipboard","text":""})");
    test.receive(R"({"action":"clipboard","text":""})");
    EXPECT_EQ(test.fake.pasteboard.calls.count(QStringLiteral("set:")), 2);
    EXPECT_EQ(test.store->clipboardHistory.get().size(), 2);
    EXPECT_EQ(test.fake.userNotificationCenter.added.size(), 2U);
}

TEST(Clipboard, WithoutATextNothingHappens) {
    TestServer test;
    test.receive(R"({"action":"clipboard"})");
    test.receive(R"({"action":"clipboard","text":5})");
    EXPECT_THAT(test.fake.pasteboard.calls, IsEmpty());
    EXPECT_THAT(test.fake.userNotificationCenter.added, IsEmpty());
}

TEST(Clipboard, WithoutAStoreTheRestHappens) {
    TestServer test;
    test.store.reset();
    test.receive(R"({"action":"clipboard","text":"t"})");
    EXPECT_EQ(test.fake.pasteboard.calls.size(), 2);
    EXPECT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
}

TEST(ForwardedNotification, ReachesTheHistoryAndTheDesktop) {
    TestServer test;
    test.receive(R"({"app":"Chat","title":"Ann","body":"Hi","time":1700000000,"key":"k1"})");
    ASSERT_EQ(test.store->items.get().size(), 1);
    EXPECT_EQ(test.store->items.get()[0].key, QStringLiteral("k1"));
    ASSERT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
    EXPECT_EQ(test.fake.userNotificationCenter.added[0].identifier.text(), QStringLiteral("k1"));
}

TEST(ForwardedNotification, IsToldByTheKeyAppWhateverItsValue) {
    TestServer test;
    test.receive(R"({"app":"Chat"})");
    test.receive(R"({"app":null})");
    test.receive(R"({"action":12,"app":"Chat"})");
    test.receive(R"({"action":null,"app":"Chat"})");
    EXPECT_EQ(test.store->items.get().size(), 4);
    EXPECT_TRUE(test.store->items.get()[3].title.isEmpty());
    EXPECT_TRUE(test.store->items.get()[3].body.isEmpty());
}

TEST(ForwardedNotification, ThatDoesNotDecodeIsIgnoredWithoutALog) {
    TestServer test;
    test.receive(R"({"app":5})");
    test.receive(R"({"app":"Chat","time":"now"})");
    EXPECT_TRUE(test.store->items.get().isEmpty());
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST(ForwardedNotification, WithoutAStoreIsStillPosted) {
    TestServer test;
    test.store.reset();
    test.receive(R"({"app":"Chat","title":"Ann"})");
    EXPECT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
}

TEST(ForwardedNotification, IsPostedEvenIfTheServerGoesBeforeTheStepRuns) {
    TestServer test;
    test.phone = test.connectPhone();
    test.phone->deliver(R"({"app":"Chat","title":"Ann"})");
    test.queue.run();
    test.server.reset();
    test.main.run();
    EXPECT_TRUE(test.store->items.get().isEmpty());
    EXPECT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
}

TEST(ForwardedNotification, ARepeatThatIsNotShownIsInTheHistoryAllTheSame) {
    TestServer test;
    test.receive(R"({"app":"Chat","title":"Ann","body":"Hi"})");
    test.receive(R"({"app":"SMS","title":"+491701234567","body":"Hi"})");
    EXPECT_EQ(test.store->items.get().size(), 2);
    EXPECT_EQ(test.fake.userNotificationCenter.added.size(), 1U);
}
