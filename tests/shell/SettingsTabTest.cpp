#include "fakes/TestView.h"

#include <QLocale>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct SettingsTab : testing::Test, TestView {};

using Status = SettingsTab;
using Port = SettingsTab;

} // namespace

TEST_F(Status, IsNotConnectedAtFirst) {
    EXPECT_FALSE(view.isConnected());
    EXPECT_EQ(view.batteryText(), QString());
}

TEST_F(Status, ShowsWhoIsConnected) {
    const auto told = countSignals(view, &SettingsView::phoneStatusChanged);
    store->connectedRemoteIP.set(QStringLiteral("192.168.1.7"));
    EXPECT_TRUE(view.isConnected());
    EXPECT_EQ(view.deviceName(), QString());
    EXPECT_EQ(view.networkText(), QStringLiteral("IP: 192.168.1.7"));
    store->connectedDeviceName.set(QStringLiteral("Pixel"));
    store->connectedWifiName.set(QStringLiteral("Home"));
    EXPECT_EQ(view.deviceName(), QStringLiteral("Pixel"));
    EXPECT_EQ(view.networkText(), QStringLiteral("Home"));
    EXPECT_EQ(*told, 3);
    store->connectedWifiName.set(QStringLiteral("Home"));
    EXPECT_EQ(*told, 3) << "nothing new";
    store->connectedRemoteIP.set({});
    EXPECT_FALSE(view.isConnected());
}

TEST_F(Status, ShowsWhatTheStoreHeldBeforeTheWindow) {
    store->connectedRemoteIP.set(QStringLiteral("192.168.1.7"));
    store->batteryLevel.set(80);
    const SettingsView later(fake.platform, main, *server, *store);
    EXPECT_TRUE(later.isConnected());
    EXPECT_EQ(later.batteryText(), QStringLiteral("80%"));
}

TEST_F(Status, ABatteryIsLowBelow20) {
    store->batteryLevel.set(19);
    EXPECT_TRUE(view.isBatteryLow());
    store->batteryLevel.set(20);
    EXPECT_FALSE(view.isBatteryLow());
    EXPECT_EQ(view.batteryText(), QStringLiteral("20%"));
}

TEST_F(Status, AChargerAloneShowsNoBattery) {
    store->isCharging.set(true);
    EXPECT_TRUE(view.isCharging());
    EXPECT_EQ(view.batteryText(), QString());
    EXPECT_FALSE(view.isBatteryLow());
}

TEST(PhoneStatus, HasAWordForAnAddressThatIsNotKnown) {
    EXPECT_EQ(PhoneStatus().networkText(), QStringLiteral("IP: Unknown"));
}

TEST_F(Port, IsTheUsualOneUntilOneIsStored) {
    EXPECT_EQ(view.portText(), QStringLiteral("8765"));
    fake.userDefaults.set(QStringLiteral("port"), 0);
    EXPECT_EQ(view.portText(), QStringLiteral("0")) << "shown as stored, whatever the server makes of it";
}

TEST_F(Port, HasNoSeparatorInAnyLocale) {
    const QLocale before;
    for (const auto* name : {"de_DE", "fr_FR", "en_IN"}) {
        QLocale::setDefault(QLocale(QString::fromUtf8(name)));
        EXPECT_EQ(view.portText(), QStringLiteral("8765")) << name;
        EXPECT_TRUE(view.commitPort(QStringLiteral("8765")));
    }
    QLocale::setDefault(before);
}

TEST_F(Port, WhatTheFieldHoldsIsStored) {
    const auto told = countSignals(view, &SettingsView::portChanged);
    for (const qint64 port : {qint64{9000}, qint64{0}, qint64{-5}, qint64{70'000}}) {
        EXPECT_TRUE(view.commitPort(QStringLiteral(" %1 ").arg(port)));
        EXPECT_EQ(fake.userDefaults.integer(u"port"), port);
        EXPECT_EQ(view.portText(), QString::number(port));
    }
    EXPECT_EQ(*told, 4);
}

TEST_F(Port, WhatIsNoIntegerIsNot) {
    for (const auto* text : {"", "abc", "80.5", "99999999999999999999"}) {
        EXPECT_FALSE(view.commitPort(QString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(fake.userDefaults.contains(u"port"));
    EXPECT_EQ(view.portText(), QStringLiteral("8765"));
    EXPECT_FALSE(view.serverRestartNeeded());
}

TEST_F(Port, AChangeAsksForARestartAndSoDoesTheWayBack) {
    EXPECT_FALSE(view.serverRestartNeeded());
    view.commitPort(QStringLiteral("8765"));
    EXPECT_FALSE(view.serverRestartNeeded()) << "no change";
    view.commitPort(QStringLiteral("9000"));
    view.commitPort(QStringLiteral("8765"));
    EXPECT_TRUE(view.serverRestartNeeded());
}

TEST_F(Port, AChangeAloneLeavesTheServerAlone) {
    server->start();
    run();
    view.commitPort(QStringLiteral("9000"));
    run();
    EXPECT_THAT(transport.ports, ElementsAre(8765));
}

TEST_F(Port, ARestartUsesTheNewOneAndItsButtonGoesAtOnce) {
    server->start();
    run();
    view.commitPort(QStringLiteral("9000"));
    view.restartServer();
    EXPECT_FALSE(view.serverRestartNeeded());
    run();
    EXPECT_THAT(transport.ports, ElementsAre(8765, 9000));
}

TEST_F(Port, ARestartThatFailsTakesTheButtonAwayToo) {
    view.commitPort(QStringLiteral("9000"));
    transport.error = QStringLiteral("Too many open files");
    view.restartServer();
    EXPECT_FALSE(view.serverRestartNeeded());
}

TEST_F(Port, AChangeByAnotherProcessIsAChange) {
    fake.userDefaults.set(QStringLiteral("port"), 9000);
    EXPECT_EQ(view.portText(), QStringLiteral("9000"));
    EXPECT_TRUE(view.serverRestartNeeded());
}

TEST_F(Port, TheQuestionForARestartIsNotStored) {
    view.commitPort(QStringLiteral("9000"));
    const SettingsView afterRestart(fake.platform, main, *server, *store);
    EXPECT_FALSE(afterRestart.serverRestartNeeded());
    EXPECT_EQ(afterRestart.portText(), QStringLiteral("9000"));
}
