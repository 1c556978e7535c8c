#include "fakes/TestView.h"
#include "shell/LocalIP.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct SystemStatus : testing::Test, TestView {
    [[nodiscard]] auto timesAsked() const {
        return fake.userNotificationCenter.calls.count(QStringLiteral("getNotificationSettings"));
    }
};

using NotificationStatus = SystemStatus;
using LoginSwitch = SystemStatus;

} // namespace

TEST_F(NotificationStatus, IsNotDeterminedUntilItWasAskedFor) {
    run();
    EXPECT_EQ(view.notifAuthStatus(), 0);
    EXPECT_EQ(timesAsked(), 0);
}

TEST_F(NotificationStatus, IsReadWhenTheWindowAppearsAndWhenTheTabDoes) {
    view.appeared();
    run();
    EXPECT_EQ(view.notifAuthStatus(), 2);
    fake.userNotificationCenter.status = AuthorizationStatus::denied;
    view.settingsTabAppeared();
    EXPECT_EQ(view.notifAuthStatus(), 2) << "not within the call";
    run();
    EXPECT_EQ(view.notifAuthStatus(), 1);
}

TEST_F(NotificationStatus, IsNotReadWhenTheUserComesBack) {
    view.becameActive();
    run();
    EXPECT_EQ(timesAsked(), 0);
}

TEST_F(NotificationStatus, IsReadAfterARequestWhateverCameOfIt) {
    for (const auto& error : {std::optional<QString>(), std::optional(QStringLiteral("no service"))}) {
        fake.userNotificationCenter.calls.clear();
        fake.userNotificationCenter.authorizationError = error;
        view.requestNotificationPermission();
        run();
        EXPECT_THAT(
            fake.userNotificationCenter.calls,
            ElementsAre(QStringLiteral("requestAuthorization"), QStringLiteral("getNotificationSettings")));
    }
    EXPECT_EQ(view.notifAuthStatus(), 2);
}

TEST_F(NotificationStatus, AnAnswerThatComesTooLateIsDropped) {
    auto other = std::make_unique<SettingsView>(fake.platform, main, *server, *store);
    other->refreshNotifStatus();
    other->requestNotificationPermission();
    other.reset();
    run();
}

TEST_F(SystemStatus, TheSettingsOfTheDesktopOpenWhereTheyAreNeeded) {
    view.openNotificationSettings();
    EXPECT_THAT(fake.systemSettings.opened, ElementsAre(SystemSettings::Pane::notifications));
}

TEST_F(LoginSwitch, IsReadWhenTheViewIsMadeAndNeverAgain) {
    fake.loginItem.enabled = true;
    EXPECT_FALSE(view.launchAtLogin());
    view.appeared();
    EXPECT_FALSE(view.launchAtLogin());
    EXPECT_TRUE(SettingsView(fake.platform, main, *server, *store).launchAtLogin());
}

TEST_F(LoginSwitch, AChangeRegistersTheLoginItemAndBack) {
    view.setLaunchAtLogin(true);
    EXPECT_TRUE(fake.loginItem.enabled);
    view.setLaunchAtLogin(false);
    EXPECT_FALSE(fake.loginItem.enabled);
}

TEST_F(LoginSwitch, WithoutAChangeNothingIsRegistered) {
    fake.loginItem.enabled = true;
    view.setLaunchAtLogin(false);
    EXPECT_TRUE(fake.loginItem.enabled);
}

TEST_F(LoginSwitch, AFailureDoesNotPutTheSwitchBack) {
    fake.loginItem.error = QStringLiteral("disk full");
    view.setLaunchAtLogin(true);
    EXPECT_TRUE(view.launchAtLogin());
    EXPECT_FALSE(fake.loginItem.enabled);
}

TEST_F(SystemStatus, TheAddressIsReadAnewWheneverItIsLookedAt) {
    const auto told = countSignals(view, &SettingsView::localIPChanged);
    EXPECT_EQ(SettingsView::localIP(), LocalIPAddress::current());
    view.settingsTabAppeared();
    view.becameActive();
    EXPECT_EQ(*told, 2);
}
