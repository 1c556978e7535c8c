#include "notifications/BatteryStage.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(NextBatteryStage, NothingFiresAbove25) {
    EXPECT_FALSE(nextBatteryStage(26, {}));
    EXPECT_FALSE(nextBatteryStage(100, 5));
}

TEST(NextBatteryStage, TheFirstArmedStageFiresNotTheNearest) {
    EXPECT_EQ(nextBatteryStage(12, {}), 25);
    EXPECT_EQ(nextBatteryStage(12, 25), 20);
    EXPECT_EQ(nextBatteryStage(12, 20), 15);
    EXPECT_FALSE(nextBatteryStage(12, 15));
}

TEST(NextBatteryStage, AStageFiresAtItsLevelAndOnlyOnce) {
    for (const qint64 stage : {25, 20, 15, 10, 5, 0}) {
        EXPECT_EQ(nextBatteryStage(stage, stage + 5), stage);
        EXPECT_FALSE(nextBatteryStage(stage, stage));
    }
}

TEST(NextBatteryStage, BelowZeroAllFireInTurn) {
    std::optional<qint64> last;
    for (const qint64 expected : {25, 20, 15, 10, 5, 0}) {
        last = nextBatteryStage(-1, last);
        EXPECT_EQ(last, expected);
    }
    EXPECT_FALSE(nextBatteryStage(-1, last));
}

TEST(BatteryAlert, TellsNameAndReportedLevel) {
    EXPECT_EQ(batteryAlertTitle(25, QStringLiteral("Pixel"), 12), QStringLiteral("🔋 Pixel — 12% Battery"));
    EXPECT_EQ(batteryAlertTitle(20, QStringLiteral("Pixel"), 20), QStringLiteral("🟡 Pixel — 20% Battery"));
    EXPECT_EQ(batteryAlertTitle(15, QStringLiteral("Pixel"), 15), QStringLiteral("🟡 Pixel — 15% Battery"));
    EXPECT_EQ(batteryAlertTitle(10, QStringLiteral("Pixel"), 9), QStringLiteral("🟠 Pixel — 9% Battery"));
    EXPECT_EQ(batteryAlertTitle(5, QString(), 5), QStringLiteral("🔴  — 5% Battery"));
    EXPECT_EQ(batteryAlertTitle(0, QStringLiteral("%1"), -3), QStringLiteral("🪫 %1 — -3% Battery"));
    EXPECT_EQ(batteryAlertTitle(7, QStringLiteral("Pixel"), 7), QStringLiteral("🔋 Pixel — 7% Battery"));
}

TEST(BatteryAlert, HasTheTextOfItsStage) {
    EXPECT_EQ(batteryAlertBody(25), QStringLiteral("Battery is low — connect a charger."));
    EXPECT_EQ(batteryAlertBody(20), QStringLiteral("Getting low — find a charger."));
    EXPECT_EQ(batteryAlertBody(15), QStringLiteral("Running low — consider charging."));
    EXPECT_EQ(batteryAlertBody(10), QStringLiteral("Very low — connect a charger soon."));
    EXPECT_EQ(batteryAlertBody(5), QStringLiteral("Critically low — connect a charger now."));
    EXPECT_EQ(batteryAlertBody(0), QStringLiteral("Battery is empty — plug in immediately!"));
    EXPECT_EQ(batteryAlertBody(99), QStringLiteral("Battery is low — connect a charger."));
}
