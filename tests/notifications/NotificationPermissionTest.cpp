#include "fakes/TestDelegate.h"

#include <gtest/gtest.h>

using namespace brenvale;
using namespace std::chrono_literals;

namespace {

constexpr int openSystemSettings = 1000;
constexpr int notNow = 1001;

struct PermissionTest : testing::Test, TestDelegate {
    void launch(AuthorizationStatus status) {
        fake.userNotificationCenter.status = status;
        delegate.applicationDidFinishLaunching();
        run();
    }

    [[nodiscard]] bool isInDock() const {
        return delegate.activationPolicy() == AppDelegate::ActivationPolicy::regular;
    }

    [[nodiscard]] bool hasAsked() const {
        return fake.userNotificationCenter.calls.contains(QStringLiteral("requestAuthorization"));
    }
};

} // namespace

TEST_F(PermissionTest, AllowedNotificationsNeedNothing) {
    for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::provisional,
                              AuthorizationStatus::ephemeral, AuthorizationStatus{7}}) {
        launch(status);
        EXPECT_FALSE(hasAsked());
        EXPECT_TRUE(fake.alerts.shown.empty());
        EXPECT_FALSE(isInDock());
    }
}

TEST_F(PermissionTest, TheAnswerIsActedUponOnMain) {
    fake.userNotificationCenter.status = AuthorizationStatus::denied;
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(fake.alerts.shown.empty());
    run();
    EXPECT_EQ(fake.alerts.shown.size(), 1U);
}

TEST_F(PermissionTest, ADenialIsToldAtEachStart) {
    launch(AuthorizationStatus::denied);
    EXPECT_FALSE(hasAsked());
    ASSERT_EQ(fake.alerts.shown.size(), 1U);
    const auto& alert = fake.alerts.shown.front();
    EXPECT_EQ(alert.style, Alert::Style::warning);
    EXPECT_EQ(alert.messageText, QStringLiteral("Notification Permission Required"));
    EXPECT_EQ(
        alert.informativeText,
        QStringLiteral(
            "Brenvale needs permission to show notifications forwarded from your Android device.\n\n"
            "Please open System Settings → Notifications → Brenvale and set \"Allow Notifications\" to On."));
    EXPECT_EQ(alert.buttons, QStringList({"Open System Settings", "Not Now"}));
}

TEST_F(PermissionTest, AnUndecidedUserIsAsked) {
    fake.userNotificationCenter.isGranted = true;
    launch(AuthorizationStatus::notDetermined);
    EXPECT_TRUE(hasAsked());
    EXPECT_TRUE(fake.alerts.shown.empty());
}

TEST_F(PermissionTest, ARefusalIsFollowedByTheAlertAtOnce) {
    launch(AuthorizationStatus::notDetermined);
    EXPECT_EQ(fake.alerts.shown.size(), 1U);
    EXPECT_EQ(fake.log.count("[Notifications]"), 0);
}

TEST_F(PermissionTest, AnErrorIsLoggedWhateverTheAnswer) {
    fake.userNotificationCenter.authorizationError = QStringLiteral("there is no session bus");
    fake.userNotificationCenter.isGranted = true;
    launch(AuthorizationStatus::notDetermined);
    EXPECT_EQ(fake.log.count("[Notifications] Authorization error: there is no session bus"), 1);
    EXPECT_TRUE(fake.alerts.shown.empty());

    fake.userNotificationCenter.isGranted = false;
    launch(AuthorizationStatus::notDetermined);
    EXPECT_EQ(fake.log.count("[Notifications] Authorization error: there is no session bus"), 2);
    EXPECT_EQ(fake.alerts.shown.size(), 1U);
}

TEST_F(PermissionTest, TheProgramIsInTheDockForTheAlertAndATenthOfASecondMore) {
    launch(AuthorizationStatus::denied);
    EXPECT_TRUE(isInDock());
    fake.alerts.respond(notNow);
    TestServer::main.pass(99ms);
    EXPECT_TRUE(isInDock());
    TestServer::main.pass(1ms);
    EXPECT_FALSE(isInDock());
    EXPECT_TRUE(fake.systemSettings.opened.empty());
}

TEST_F(PermissionTest, TheFirstButtonOpensTheNotificationsPane) {
    launch(AuthorizationStatus::denied);
    fake.alerts.respond(openSystemSettings);
    EXPECT_EQ(fake.systemSettings.opened, std::vector{SystemSettings::Pane::notifications});
    TestServer::main.pass(100ms);
    EXPECT_FALSE(isInDock());
}

TEST_F(PermissionTest, TheProgramStaysInTheDockWhileTheWindowIsOnShow) {
    launch(AuthorizationStatus::denied);
    delegate.showSettings(0);
    fake.alerts.respond(notNow);
    TestServer::main.pass(100ms);
    EXPECT_TRUE(isInDock());
}
