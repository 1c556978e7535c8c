#include "shell/SettingsTab.h"
#include "fakes/TestPhone.h"
#include "shell/LocalIP.h"

#include <QLocale>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Settings : testing::Test, TestPhone {
    [[nodiscard]] auto timesAsked() const {
        return fake.userNotificationCenter.calls.count(QStringLiteral("getNotificationSettings"));
    }

    SettingsTab tab{fake.platform, main, *server, *store};
};

using Status = Settings;
using Port = Settings;
using LocalAddress = Settings;
using NotificationStatus = Settings;
using LoginSwitch = Settings;

} // namespace

TEST_F(Status, IsNotConnectedAtFirst) {
    EXPECT_FALSE(tab.isConnected());
    EXPECT_EQ(tab.batteryText(), QString());
}

TEST_F(Status, ShowsWhoIsConnected) {
    const auto told = countSignals(tab, &SettingsTab::phoneStatusChanged);
    store->connectedRemoteIP.set(QStringLiteral("192.168.1.7"));
    EXPECT_TRUE(tab.isConnected());
    EXPECT_EQ(tab.deviceName(), QString());
    EXPECT_EQ(tab.networkText(), QStringLiteral("IP: 192.168.1.7"));
    store->connectedDeviceName.set(QStringLiteral("Pixel"));
    store->connectedWifiName.set(QStringLiteral("Home"));
    EXPECT_EQ(tab.deviceName(), QStringLiteral("Pixel"));
    EXPECT_EQ(tab.networkText(), QStringLiteral("Home"));
    EXPECT_EQ(*told, 3);
    store->connectedWifiName.set(QStringLiteral("Home"));
    EXPECT_EQ(*told, 3) << "nothing new";
    store->connectedRemoteIP.set({});
    EXPECT_FALSE(tab.isConnected());
}

TEST_F(Status, ShowsWhatTheStoreHeldBeforeTheWindow) {
    store->connectedRemoteIP.set(QStringLiteral("192.168.1.7"));
    store->batteryLevel.set(80);
    const SettingsTab later(fake.platform, main, *server, *store);
    EXPECT_TRUE(later.isConnected());
    EXPECT_EQ(later.batteryText(), QStringLiteral("80%"));
}

TEST_F(Status, ABatteryIsLowBelow20) {
    store->batteryLevel.set(19);
    EXPECT_TRUE(tab.isBatteryLow());
    store->batteryLevel.set(20);
    EXPECT_FALSE(tab.isBatteryLow());
    EXPECT_EQ(tab.batteryText(), QStringLiteral("20%"));
}

TEST_F(Status, AChargerAloneShowsNoBattery) {
    store->isCharging.set(true);
    EXPECT_TRUE(tab.isCharging());
    EXPECT_EQ(tab.batteryText(), QString());
    EXPECT_FALSE(tab.isBatteryLow());
}

TEST(PhoneStatus, HasAWordForAnAddressThatIsNotKnown) {
    EXPECT_EQ(PhoneStatus().networkText(), QStringLiteral("IP: Unknown"));
}

TEST_F(Port, IsTheUsualOneUntilOneIsStored) {
    EXPECT_EQ(tab.portText(), QStringLiteral("8765"));
    fake.userDefaults.set(QStringLiteral("port"), 0);
    EXPECT_EQ(tab.portText(), QStringLiteral("0")) << "shown as stored, whatever the server makes of it";
}

TEST_F(Port, HasNoSeparatorInAnyLocale) {
    const QLocale before;
    for (const auto* name : {"de_DE", "fr_FR", "en_IN"}) {
        QLocale::setDefault(QLocale(QString::fromUtf8(name)));
        EXPECT_EQ(tab.portText(), QStringLiteral("8765")) << name;
        EXPECT_TRUE(tab.commitPort(QStringLiteral("8765")));
    }
    QLocale::setDefault(before);
}

TEST_F(Port, WhatTheFieldHoldsIsStored) {
    const auto told = countSignals(tab, &SettingsTab::portChanged);
    for (const qint64 port : {qint64{9000}, qint64{0}, qint64{-5}, qint64{70'000}}) {
        EXPECT_TRUE(tab.commitPort(QStringLiteral(" %1 ").arg(port)));
        EXPECT_EQ(fake.userDefaults.integer(u"port"), port);
        EXPECT_EQ(tab.portText(), QString::number(port));
    }
    EXPECT_EQ(*told, 4);
}

TEST_F(Port, WhatIsNoIntegerIsNot) {
    for (const auto* text : {"", "abc", "80.5", "99999999999999999999"}) {
        EXPECT_FALSE(tab.commitPort(QString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(fake.userDefaults.contains(u"port"));
    EXPECT_EQ(tab.portText(), QStringLiteral("8765"));
    EXPECT_FALSE(tab.serverRestartNeeded());
}

TEST_F(Port, AChangeAsksForARestartAndSoDoesTheWayBack) {
    EXPECT_FALSE(tab.serverRestartNeeded());
    tab.commitPort(QStringLiteral("8765"));
    EXPECT_FALSE(tab.serverRestartNeeded()) << "no change";
    tab.commitPort(QStringLiteral("9000"));
    tab.commitPort(QStringLiteral("8765"));
    EXPECT_TRUE(tab.serverRestartNeeded());
}

TEST_F(Port, AChangeAloneLeavesTheServerAlone) {
    server->start();
    run();
    tab.commitPort(QStringLiteral("9000"));
    run();
    EXPECT_THAT(transport.ports, ElementsAre(8765));
}

TEST_F(Port, ARestartUsesTheNewOneAndItsButtonGoesAtOnce) {
    server->start();
    run();
    tab.commitPort(QStringLiteral("9000"));
    tab.restartServer();
    EXPECT_FALSE(tab.serverRestartNeeded());
    run();
    EXPECT_THAT(transport.ports, ElementsAre(8765, 9000));
}

TEST_F(Port, ARestartThatFailsTakesTheButtonAwayToo) {
    tab.commitPort(QStringLiteral("9000"));
    transport.error = QStringLiteral("Too many open files");
    tab.restartServer();
    EXPECT_FALSE(tab.serverRestartNeeded());
}

TEST_F(Port, AChangeByAnotherProcessIsAChange) {
    fake.userDefaults.set(QStringLiteral("port"), 9000);
    EXPECT_EQ(tab.portText(), QStringLiteral("9000"));
    EXPECT_TRUE(tab.serverRestartNeeded());
}

TEST_F(Port, TheQuestionForARestartIsNotStored) {
    tab.commitPort(QStringLiteral("9000"));
    const SettingsTab afterRestart(fake.platform, main, *server, *store);
    EXPECT_FALSE(afterRestart.serverRestartNeeded());
    EXPECT_EQ(afterRestart.portText(), QStringLiteral("9000"));
}

TEST_F(NotificationStatus, IsNotDeterminedUntilItWasAskedFor) {
    run();
    EXPECT_EQ(tab.notifAuthStatus(), 0);
    EXPECT_EQ(timesAsked(), 0);
}

TEST_F(NotificationStatus, IsReadWhenItIsAskedForAndWhenTheTabAppears) {
    tab.refreshNotifStatus();
    run();
    EXPECT_EQ(tab.notifAuthStatus(), 2);
    fake.userNotificationCenter.status = AuthorizationStatus::denied;
    tab.appeared();
    EXPECT_EQ(tab.notifAuthStatus(), 2) << "not within the call";
    run();
    EXPECT_EQ(tab.notifAuthStatus(), 1);
}

TEST_F(NotificationStatus, IsReadAfterARequestWhateverCameOfIt) {
    for (const auto& error : {std::optional<QString>(), std::optional(QStringLiteral("no service"))}) {
        fake.userNotificationCenter.calls.clear();
        fake.userNotificationCenter.authorizationError = error;
        tab.requestNotificationPermission();
        run();
        EXPECT_THAT(
            fake.userNotificationCenter.calls,
            ElementsAre(QStringLiteral("requestAuthorization"), QStringLiteral("getNotificationSettings")));
    }
    EXPECT_EQ(tab.notifAuthStatus(), 2);
}

TEST_F(NotificationStatus, AnAnswerThatComesTooLateIsDropped) {
    auto other = std::make_unique<SettingsTab>(fake.platform, main, *server, *store);
    other->refreshNotifStatus();
    other->requestNotificationPermission();
    other.reset();
    run();
}

TEST_F(NotificationStatus, TheSettingsOfTheDesktopOpenWhereItIsDenied) {
    tab.openNotificationSettings();
    EXPECT_THAT(fake.systemSettings.opened, ElementsAre(SystemSettings::Pane::notifications));
}

TEST_F(LoginSwitch, IsReadWhenTheViewIsMadeAndNeverAgain) {
    fake.loginItem.enabled = true;
    EXPECT_FALSE(tab.launchAtLogin());
    tab.appeared();
    EXPECT_FALSE(tab.launchAtLogin());
    EXPECT_TRUE(SettingsTab(fake.platform, main, *server, *store).launchAtLogin());
}

TEST_F(LoginSwitch, AChangeRegistersTheLoginItemAndBack) {
    tab.setLaunchAtLogin(true);
    EXPECT_TRUE(fake.loginItem.enabled);
    tab.setLaunchAtLogin(false);
    EXPECT_FALSE(fake.loginItem.enabled);
}

TEST_F(LoginSwitch, WithoutAChangeNothingIsRegistered) {
    fake.loginItem.enabled = true;
    tab.setLaunchAtLogin(false);
    EXPECT_TRUE(fake.loginItem.enabled);
}

TEST_F(LoginSwitch, AFailureDoesNotPutTheSwitchBack) {
    fake.loginItem.error = QStringLiteral("disk full");
    tab.setLaunchAtLogin(true);
    EXPECT_TRUE(tab.launchAtLogin());
    EXPECT_FALSE(fake.loginItem.enabled);
}

TEST_F(LocalAddress, IsReadAnewWheneverItIsLookedAt) {
    const auto told = countSignals(tab, &SettingsTab::localIPChanged);
    EXPECT_EQ(SettingsTab::localIP(), LocalIPAddress::current());
    tab.appeared();
    tab.refreshLocalIP();
    EXPECT_EQ(*told, 2);
}

TEST_F(LocalAddress, CanBeCopied) {
    tab.copyLocalIP();
    EXPECT_THAT(fake.pasteboard.calls, ElementsAre("clear", QStringLiteral("set:") + SettingsTab::localIP()));
}
