#include "ShownWindow.h"

#include <QQuickItem>
#include <QTest>

using namespace brenvale;

namespace {

using SettingsTabTest = ShownWindow;
using InfoTabTest = ShownWindow;

} // namespace

TEST_F(SettingsTabTest, WithoutAPhoneItSaysHowToConnectOne) {
    show(Tab::settings);
    EXPECT_TRUE(shows("Not Connected"));
    EXPECT_TRUE(shows(
        "Download 'Brenvale Android' and enter this IP and Port in the app settings to link your devices."));
}

TEST_F(SettingsTabTest, WithAPhoneItShowsWhoItIs) {
    show(Tab::settings);
    store->connectedRemoteIP.set(QStringLiteral("192.168.1.7"));
    settle();
    EXPECT_FALSE(shows("Not Connected"));
    EXPECT_TRUE(shows("IP: 192.168.1.7"));
    store->isCharging.set(true);
    settle();
    EXPECT_FALSE(shows("%")) << "a charger alone is no battery";
    store->connectedDeviceName.set(QStringLiteral("Pixel"));
    store->batteryLevel.set(19);
    settle();
    EXPECT_TRUE(shows("Pixel"));
    EXPECT_TRUE(shows("19%, charging"));
    store->isCharging.set(false);
    settle();
    EXPECT_TRUE(shows("19%"));
}

TEST_F(SettingsTabTest, RestartIsThereWhileAnotherPortWaitsForIt) {
    show(Tab::settings);
    EXPECT_FALSE(shows("Restart"));
    view.settingsTab()->commitPort(QStringLiteral("9000"));
    settle();
    ASSERT_TRUE(press("Restart"));
    EXPECT_EQ(transport.ports.back(), 9000);
    EXPECT_FALSE(shows("Restart"));
}

TEST_F(SettingsTabTest, ThePortComesBeforeItsRestart) {
    show(Tab::settings);
    view.settingsTab()->commitPort(QStringLiteral("9000"));
    settle();
    EXPECT_LT(find(QStringLiteral("Port"))->rect().left(), find(QStringLiteral("Restart"))->rect().left());
}

TEST_F(SettingsTabTest, RestartShowsWhileOneTypesAndTabLandsOnIt) {
    show(Tab::settings);
    QQuickItem* field = nullptr;
    for (auto* item : window.view()->rootObject()->findChildren<QQuickItem*>()) {
        field = QByteArray(item->metaObject()->className()).startsWith("PortField") ? item : field;
    }
    ASSERT_NE(field, nullptr);
    const auto place = field->mapToScene({});
    field->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window.view(), Qt::Key_Backspace);
    settle();
    EXPECT_TRUE(shows("Restart"));
    EXPECT_EQ(field->mapToScene({}), place) << "its room is reserved";
    QTest::keyClick(window.view(), Qt::Key_Tab);
    settle();
    auto* button = QAccessible::queryAccessibleInterface(window.view()->activeFocusItem());
    ASSERT_EQ(button->text(QAccessible::Name), QStringLiteral("Restart"));
    const auto starts = transport.ports.size();
    QTest::keyClick(window.view(), Qt::Key_Return);
    settle();
    EXPECT_EQ(transport.ports.size(), starts + 1);
    EXPECT_FALSE(shows("Restart"));
    EXPECT_EQ(window.view()->activeFocusItem(), field) << "what hides passes the keyboard on";
}

TEST_F(SettingsTabTest, TheAddressIsCopiedByItsButton) {
    show(Tab::settings);
    ASSERT_TRUE(press("Copy IP address"));
    EXPECT_EQ(fake.pasteboard.calls,
              QStringList({QStringLiteral("clear"), QStringLiteral("set:") + view.settingsTab()->localIP()}));
}

TEST_F(SettingsTabTest, NotificationsThatWereNotAskedForAreAskedFor) {
    fake.userNotificationCenter.status = AuthorizationStatus::notDetermined;
    show(Tab::settings);
    EXPECT_FALSE(shows("Enabled"));
    fake.userNotificationCenter.status = AuthorizationStatus::authorized;
    ASSERT_TRUE(press("Request Permission"));
    EXPECT_TRUE(shows("Enabled"));
    EXPECT_FALSE(shows("Request Permission"));
}

TEST_F(SettingsTabTest, BlockedNotificationsLeadToTheDesktopsSettings) {
    fake.userNotificationCenter.status = AuthorizationStatus::denied;
    show(Tab::settings);
    ASSERT_TRUE(press("Blocked - Open System Settings"));
    EXPECT_EQ(fake.systemSettings.opened, std::vector{SystemSettings::Pane::notifications});
}

TEST_F(SettingsTabTest, ProvisionalAndEphemeralPermissionsAreEnabledToo) {
    for (const auto status : {AuthorizationStatus::provisional, AuthorizationStatus::ephemeral}) {
        fake.userNotificationCenter.status = status;
        show(Tab::settings);
        EXPECT_TRUE(shows("Enabled"));
        close();
    }
}

TEST_F(SettingsTabTest, TheSwitchRegistersTheLoginItem) {
    show(Tab::settings);
    auto* control = find(QStringLiteral("Launch at login"));
    ASSERT_NE(control, nullptr);
    for (const bool isOn : {true, false}) {
        for (const auto& name : namesOf(QAccessible::CheckBox)) {
            EXPECT_EQ(name, QStringLiteral("Launch at login"));
        }
        view.settingsTab()->setLaunchAtLogin(isOn);
        settle();
        EXPECT_EQ(fake.loginItem.enabled, isOn);
    }
}

TEST_F(InfoTabTest, TellsWhatItIsAndWhoMakesIt) {
    show(Tab::info);
    EXPECT_TRUE(shows("Version 1.0 (Build 1)"));
    EXPECT_TRUE(shows("Description"));
    EXPECT_TRUE(shows("Visit Profile"));
    EXPECT_TRUE(shows("Support via Paylane"));
}

TEST_F(InfoTabTest, ALinkIsALink) {
    show(Tab::info);
    EXPECT_EQ(find(QStringLiteral("Visit Profile"))->role(), QAccessible::Link);
}
