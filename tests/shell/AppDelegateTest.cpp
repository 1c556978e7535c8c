#include "shell/AppDelegate.h"
#include "fakes/TestServer.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct TestDelegate : TestServer {
    AppDelegate delegate{fake.platform, main, *server};
};

} // namespace

TEST(AppDelegate, ConstructionTouchesNothing) {
    TestServer test;
    test.server->historyStore = {};
    const AppDelegate delegate(test.fake.platform, test.main, *test.server);
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

TEST(AppDelegate, AServerThatCannotListenDoesNotStopTheLaunch) {
    TestDelegate test;
    test.transport.error = QStringLiteral("Too many open files");
    test.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.delegate.activationPolicy(), AppDelegate::ActivationPolicy::accessory);
}

TEST(AppDelegate, ClosingWindowsNeverEndsTheProcess) {
    EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}
