#include "fakes/TestServer.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct BatteryAlerts : testing::Test {
    void report(int level, bool isCharging = false) {
        test.receive(R"({"action":"battery_status","level":)" + std::to_string(level) + R"(,"isCharging":)" +
                     (isCharging ? "true}" : "false}"));
    }

    /// The titles of all alerts so far.
    [[nodiscard]] std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        titles.reserve(test.fake.userNotificationCenter.added.size());
        for (const auto& request : test.fake.userNotificationCenter.added) {
            titles.push_back(request.content.title.toStdString());
        }
        return titles;
    }

    TestServer test;
};

} // namespace

TEST_F(BatteryAlerts, LevelAndChargingAreStored) {
    report(80, true);
    EXPECT_EQ(test.store->batteryLevel.get(), 80);
    EXPECT_TRUE(test.store->isCharging.get());
    test.receive(R"({"action":"battery_status"})");
    EXPECT_EQ(test.store->batteryLevel.get(), std::nullopt);
    EXPECT_FALSE(test.store->isCharging.get());
    test.receive(R"({"action":"battery_status","level":50.5,"isCharging":1})");
    EXPECT_EQ(test.store->batteryLevel.get(), std::nullopt);
    EXPECT_FALSE(test.store->isCharging.get());
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(BatteryAlerts, OneReportRaisesOneAlertAtMost) {
    report(26);
    EXPECT_THAT(titles(), IsEmpty());
    report(25);
    report(25);
    EXPECT_THAT(titles(), ElementsAre("🔋 Your Android — 25% Battery"));
    const auto& content = test.fake.userNotificationCenter.added[0].content;
    EXPECT_EQ(content.body, QStringLiteral("Battery is low — connect a charger."));
    EXPECT_TRUE(content.hasDefaultSound);
}

TEST_F(BatteryAlerts, APhoneFirstHeardAt12WalksDownReportByReport) {
    for (int i = 0; i < 5; ++i) {
        report(12);
    }
    EXPECT_THAT(titles(), ElementsAre("🔋 Your Android — 12% Battery", "🟡 Your Android — 12% Battery",
                                      "🟡 Your Android — 12% Battery"));
}

TEST_F(BatteryAlerts, NameThePhone) {
    test.receive(R"({"action":"connected","deviceName":"Pixel"})");
    report(3);
    test.store->connectedDeviceName.set(QString());
    report(3);
    EXPECT_THAT(titles(), ElementsAre("🔋 Pixel — 3% Battery", "🟡  — 3% Battery"));
}

TEST_F(BatteryAlerts, ARisingLevelArmsNothing) {
    report(20);
    report(20);
    report(90);
    report(20);
    EXPECT_EQ(titles().size(), 2U);
}

TEST_F(BatteryAlerts, PluggingInArmsEveryStage) {
    report(10);
    report(10);
    report(10, true);
    report(10, true);
    EXPECT_EQ(titles().size(), 2U);
    report(10);
    EXPECT_EQ(titles().back(), "🔋 Your Android — 10% Battery");
}

TEST_F(BatteryAlerts, PluggingInArmsEvenWithoutALevel) {
    report(25);
    test.receive(R"({"action":"battery_status","isCharging":true})");
    report(25);
    EXPECT_EQ(titles().size(), 2U);
}

TEST_F(BatteryAlerts, ADisconnectArmsNothing) {
    report(25);
    test.phone->report({Connection::State::failed, "x"});
    test.run();
    test.phone.reset();
    report(25);
    EXPECT_EQ(titles().size(), 1U);
    EXPECT_EQ(test.store->batteryLevel.get(), 25);
}

TEST_F(BatteryAlerts, WithoutAStoreTheAlertComesAllTheSame) {
    test.store.reset();
    report(25);
    EXPECT_THAT(titles(), ElementsAre("🔋 Your Android — 25% Battery"));
}

TEST_F(BatteryAlerts, DoNothingOnceTheServerIsGone) {
    test.phone = test.connectPhone();
    test.phone->deliver(R"({"action":"battery_status","level":5})");
    test.queue.run();
    test.server.reset();
    test.main.run();
    EXPECT_EQ(test.store->batteryLevel.get(), std::nullopt);
    EXPECT_THAT(titles(), IsEmpty());
}
