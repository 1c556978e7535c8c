#include "shell/AppDelegate.h"
#include "fakes/TestDelegate.h"
#include "shell/SettingsView.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(AppDelegate, ConstructionTouchesNothing) {
    TestServer test;
    test.server->historyStore = {};
    const AppDelegate delegate(test.fake.platform, test.main, *test.server, {}, {});
    test.run();
    EXPECT_TRUE(test.transport.ports.empty());
    EXPECT_TRUE(test.server->historyStore.expired());
    EXPECT_TRUE(test.fake.userNotificationCenter.calls.isEmpty());
}

TEST(AppDelegate, LaunchHandsOverTheStoreAndStartsTheServer) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.server->historyStore.lock().get(), &test.delegate.historyStore());
    EXPECT_EQ(test.transport.ports.size(), 1U);
    test.receive(R"({"action":"connected","deviceName":"Pixel"})");
    EXPECT_EQ(test.delegate.historyStore().connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(AppDelegate, LaunchSetsTheDelegateThenAsksForPermissionThenRegistersTheCategories) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.fake.userNotificationCenter.delegate, &test.delegate);
    EXPECT_EQ(test.fake.userNotificationCenter.calls,
              QStringList({"setDelegate", "getNotificationSettings", "setNotificationCategories"}));
}

TEST(AppDelegate, LaunchAsksForAccessibilityOnceAndDoesNotMindTheAnswer) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    test.run();
    EXPECT_EQ(test.fake.accessibilityTrust.prompts, 1);
    EXPECT_EQ(test.transport.ports.size(), 1U);
}

TEST(AppDelegate, LaunchGoesFromTheNotificationsByTheQuestionAndTheMenuToTheServer) {
    TestDelegate test;
    test.server->historyStore = {};
    QStringList steps;
    test.fake.accessibilityTrust.asked = [&] {
        EXPECT_EQ(test.fake.userNotificationCenter.categories.size(), 1);
        EXPECT_TRUE(test.fake.statusItem.rows.empty());
        steps.append(QStringLiteral("question"));
    };
    test.fake.statusItem.menuSet = [&] {
        EXPECT_FALSE(test.server->onStatusChange);
        EXPECT_TRUE(test.server->historyStore.expired());
        EXPECT_TRUE(test.transport.ports.empty());
        steps.append(QStringLiteral("menu"));
    };
    test.server->onStatusChange = {};
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(steps, QStringList({"question", "menu"}));
}

TEST(AppDelegate, AServerThatCannotListenDoesNotStopTheLaunch) {
    TestDelegate test;
    test.transport.error = QStringLiteral("Too many open files");
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.delegate.activationPolicy(), AppDelegate::ActivationPolicy::accessory);
}

TEST(AppDelegate, ClosingWindowsNeverEndsTheProcess) {
    EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

TEST(AppDelegate, TheWindowIsMadeWhenItIsFirstShownAndThenKept) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.windowsMade, 0);
    test.delegate.showSettings(2);
    test.window->close();
    test.delegate.showSettings(4);
    EXPECT_EQ(test.windowsMade, 1);
    EXPECT_EQ(test.window->timesOrderedFront, 2);
}

TEST(AppDelegate, TheTabIsStoredBeforeTheWindowIsMade) {
    TestDelegate test;
    test.delegate.showSettings(6);
    EXPECT_EQ(test.fake.userDefaults.integer(u"selectedSettingsTab"), 6);
    EXPECT_EQ(test.settingsView->selectedTab(), 6);
    test.delegate.showSettings(1);
    EXPECT_EQ(test.settingsView->selectedTab(), 1);
}

TEST(AppDelegate, TheProgramShowsInTheTaskBarWhileTheWindowDoes) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    test.delegate.showSettings(0);
    EXPECT_EQ(test.delegate.activationPolicy(), AppDelegate::ActivationPolicy::regular);
    test.window->close();
    EXPECT_EQ(test.delegate.activationPolicy(), AppDelegate::ActivationPolicy::accessory);
}

TEST(AppDelegate, ReopeningShowsTheTabThatWasShownLast) {
    TestDelegate test;
    EXPECT_TRUE(test.delegate.applicationShouldHandleReopen());
    EXPECT_EQ(test.settingsView->selectedTab(), 0);
    test.window->close();
    test.fake.userDefaults.setInteger(u"selectedSettingsTab", 7);
    EXPECT_TRUE(test.delegate.applicationShouldHandleReopen());
    EXPECT_TRUE(test.window->isShown);
    EXPECT_EQ(test.settingsView->selectedTab(), 7);
}

TEST(AppDelegate, ReopeningLeavesAWindowThatIsOnShowAlone) {
    TestDelegate test;
    test.delegate.showSettings(2);
    EXPECT_TRUE(test.delegate.applicationShouldHandleReopen());
    EXPECT_EQ(test.window->timesOrderedFront, 1);
    EXPECT_EQ(test.settingsView->selectedTab(), 2);
}

TEST(AppDelegate, AStartByHandOpensTheWindowOnceWhereNoTrayComes) {
    TestDelegate test;
    test.fake.userDefaults.setInteger(u"selectedSettingsTab", 3);
    test.delegate.openWindowWithoutTray();
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.windowsMade, 0);
    test.fake.statusItem.trayMissing();
    ASSERT_EQ(test.windowsMade, 1);
    EXPECT_TRUE(test.window->isShown);
    EXPECT_EQ(test.settingsView->selectedTab(), 3);
}

TEST(AppDelegate, AWindowThatTheUserHasClosedMeanwhileStaysClosedWhereNoTrayComes) {
    TestDelegate test;
    test.delegate.openWindowWithoutTray();
    test.delegate.applicationDidFinishLaunching();
    test.delegate.showSettings(2);
    test.window->close();
    test.fake.statusItem.trayMissing();
    EXPECT_FALSE(test.window->isShown);
}

TEST(AppDelegate, AStartInTheBackgroundOpensNothingWhereNoTrayComes) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(test.fake.statusItem.trayMissing);
}

TEST(AppDelegate, AComputerThatWakesUpLooksForItsPhones) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    const auto phone = test.connectPhone();
    test.fake.systemSleep.didWake();
    test.run();
    EXPECT_EQ(phone->peerChecks, 1);
}

TEST(AppDelegate, TheAddressIsFollowedWhileTheWindowIsOnShow) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(test.fake.addressWatch.change());
    test.delegate.showSettings(0);
    int told = 0;
    QObject::connect(test.settingsView->settingsTab(), &SettingsTab::localIPChanged, [&told] { ++told; });
    EXPECT_TRUE(test.fake.addressWatch.change());
    EXPECT_EQ(told, 1);
    test.window->close();
    EXPECT_FALSE(test.fake.addressWatch.change());
}
