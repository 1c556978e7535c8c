#include "shell/AppDelegate.h"
#include "fakes/TestServer.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(AppDelegate, ConstructionTouchesNothing) {
    TestServer test;
    test.server->historyStore = {};
    const AppDelegate delegate(*test.server);
    test.run();
    EXPECT_TRUE(test.transport.ports.empty());
    EXPECT_TRUE(test.server->historyStore.expired());
}

TEST(AppDelegate, LaunchHandsOverTheStoreAndStartsTheServer) {
    TestServer test;
    AppDelegate delegate(*test.server);
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(test.server->historyStore.lock().get(), &delegate.historyStore());
    EXPECT_EQ(test.transport.ports.size(), 1U);
    test.receive(R"({"action":"connected","deviceName":"Pixel"})");
    EXPECT_EQ(delegate.historyStore().connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(AppDelegate, AServerThatCannotListenDoesNotStopTheLaunch) {
    TestServer test;
    test.transport.error = QStringLiteral("Too many open files");
    AppDelegate delegate(*test.server);
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(delegate.activationPolicy(), AppDelegate::ActivationPolicy::accessory);
}

TEST(AppDelegate, ClosingWindowsNeverEndsTheProcess) {
    EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}
