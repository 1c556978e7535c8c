#include "fakes/TestServer.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using State = Connection::State;

TEST(Sending, EveryConnectionGetsTheText) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    test.server->send("one");
    test.server->send("two");
    test.run();
    for (const auto& phone : {first, second}) {
        EXPECT_THAT(phone->sent, ElementsAre(testing::_, "one", "two"));
    }
    EXPECT_EQ(first->sent[1].constData(), second->sent[1].constData()) << "one text is shared, not copied";
}

TEST(Sending, OnlySchedulesAStep) {
    TestServer test;
    const auto phone = test.connectPhone();
    test.server->send("later");
    EXPECT_EQ(phone->sent.size(), 1U);
    test.run();
    EXPECT_EQ(phone->sent.size(), 2U);
}

TEST(Sending, AConnectionBeforeItsHandshakeIsSentToAllTheSame) {
    TestServer test;
    test.server->start();
    test.run();
    const auto phone = test.transport.connect();
    test.run();
    test.server->send("early");
    test.run();
    EXPECT_THAT(phone->sent, ElementsAre("early"));
}

TEST(Sending, WithoutAConnectionTheTextVanishes) {
    TestServer test;
    test.server->send("lost");
    test.run();
    EXPECT_TRUE(test.fake.log.lines().isEmpty());
    const auto phone = test.connectPhone();
    EXPECT_EQ(phone->sent.size(), 1U);
}

TEST(Sending, AFailureIsLoggedForEachConnectionAndChangesNothing) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    first->sendError = "Broken pipe";
    test.server->send("x");
    test.run();
    EXPECT_EQ(test.fake.log.count("Send error"), 1);
    EXPECT_EQ(test.fake.log.lines().last(), "Send error: Broken pipe");
    test.server->send("y");
    test.run();
    EXPECT_EQ(first->sent.size(), 3U);
    EXPECT_EQ(second->sent.size(), 3U);
}

namespace {

void fillStore(HistoryStore& store) {
    store.availableSIMs.set({{1, QStringLiteral("Carrier")}});
    store.connectedWifiName.set(QStringLiteral("Home"));
    store.connectedDeviceName.set(QStringLiteral("Pixel"));
    store.batteryLevel.set(50);
    store.isCharging.set(true);
    store.incomingCallInfo.set(IncomingCallInfo{QStringLiteral("1"), {}});
    store.addClipboard(QStringLiteral("text"));
}

} // namespace

TEST(Removing, TheStoreKeepsItsFieldsWhileAnotherPhoneRemains) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    fillStore(*test.store);
    first->report({State::failed, "x"});
    test.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
    EXPECT_EQ(test.store->availableSIMs.get().size(), 1);
    second->report({State::failed, "x"});
    test.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
}

TEST(Removing, TheLastPhoneClearsWhatIsTheConnectionsAlone) {
    TestServer test;
    const auto phone = test.connectPhone();
    fillStore(*test.store);
    phone->report({State::failed, "x"});
    test.run();
    EXPECT_TRUE(test.store->availableSIMs.get().isEmpty());
    EXPECT_EQ(test.store->connectedRemoteIP.get(), std::nullopt);
    EXPECT_EQ(test.store->connectedWifiName.get(), std::nullopt);
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
    EXPECT_EQ(test.store->batteryLevel.get(), 50);
    EXPECT_TRUE(test.store->isCharging.get());
    EXPECT_TRUE(test.store->incomingCallInfo.get().has_value());
    EXPECT_EQ(test.store->clipboardHistory.get().size(), 1);
}

TEST(Stopping, CancelsTheListenerAndEveryConnectionAndClearsTheStore) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    fillStore(*test.store);
    test.server->stop();
    EXPECT_FALSE(first->isCancelled) << "the connections are the queue's alone";
    test.main.run();
    EXPECT_TRUE(test.store->availableSIMs.get().isEmpty());
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
    test.run();
    EXPECT_TRUE(first->isCancelled);
    EXPECT_TRUE(second->isCancelled);
    EXPECT_TRUE(test.transport.listeners[0]->isCancelled);
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
    EXPECT_EQ(test.statuses, QStringList{QStringLiteral("stopped")});
}

TEST(Stopping, WithoutAListenerReportsNothing) {
    TestServer test;
    test.server->stop();
    test.run();
    EXPECT_TRUE(test.statuses.isEmpty());
}

TEST(Ownership, TheServerDoesNotKeepTheStoreAlive) {
    TestServer test;
    const auto phone = test.connectPhone();
    test.store.reset();
    phone->deliver(R"({"action":"device_info","wifiName":"w","deviceName":"d"})");
    phone->deliver(R"({"action":"sim_info","sims":[]})");
    test.run();
    phone->report({State::failed, "x"});
    test.run();
    EXPECT_TRUE(test.server->historyStore.expired());
}

TEST(Ownership, HandlersDoNothingOnceTheServerIsGone) {
    TestServer test;
    const auto phone = test.connectPhone();
    const auto lines = test.fake.log.lines();
    test.server.reset();
    phone->deliver("{}");
    phone->report({State::failed, "x"});
    test.transport.listeners[0]->report({Listener::State::ready, {}});
    test.run();
    EXPECT_EQ(test.fake.log.lines(), lines);
    EXPECT_TRUE(test.statuses.isEmpty());
}

TEST(Checking, EveryConnectionIsAskedForASignOfLife) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    test.server->checkConnections();
    EXPECT_EQ(first->peerChecks, 0) << "only a step is scheduled";
    test.run();
    EXPECT_EQ(first->peerChecks, 1);
    EXPECT_EQ(second->peerChecks, 1);
}
