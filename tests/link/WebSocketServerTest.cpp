#include "fakes/TestServer.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

using namespace brenvale;
using namespace std::chrono_literals;
using testing::ElementsAre;
using State = Connection::State;

namespace {

const QByteArray prefix = "[WebSocketServer] Connection 192.168.1.7:40312";

} // namespace

TEST(Port, Is8765UnlessTheUserSetOne) {
    TestServer test;
    EXPECT_EQ(test.server->port(), 8765);
    for (const qint64 unset : {0, -1, -70000}) {
        test.fake.userDefaults.set(QStringLiteral("port"), unset);
        EXPECT_EQ(test.server->port(), 8765) << unset;
    }
    for (const qint64 set : {1, 9000, 65535}) {
        test.fake.userDefaults.set(QStringLiteral("port"), set);
        EXPECT_EQ(test.server->port(), set);
    }
}

TEST(PortDeathTest, Above65535IsFatal) {
    TestServer test;
    test.fake.userDefaults.set(QStringLiteral("port"), 65536);
    EXPECT_DEATH((void)test.server->port(), "Not enough bits to represent the passed value");
}

TEST(Listening, StartMakesAListenerOnThePortAndReportsReady) {
    TestServer test;
    test.fake.userDefaults.set(QStringLiteral("port"), 9001);
    test.server->start();
    EXPECT_TRUE(test.statuses.isEmpty());
    test.run();
    EXPECT_THAT(test.transport.ports, ElementsAre(9001));
    ASSERT_TRUE(test.transport.listeners[0]->isStarted);
    test.transport.listeners[0]->report({Listener::State::ready, {}});
    test.run();
    EXPECT_EQ(test.statuses, QStringList{QStringLiteral("listening on :9001")});
}

TEST(Listening, ReadyReportsThePortOfTheSettingsAsItIsThen) {
    TestServer test;
    test.server->start();
    test.run();
    test.fake.userDefaults.set(QStringLiteral("port"), 9002);
    test.transport.listeners[0]->report({Listener::State::ready, {}});
    test.run();
    EXPECT_EQ(test.statuses, QStringList{QStringLiteral("listening on :9002")});
}

TEST(Listening, CreationThatFailsIsReportedAtOnceAndNotRetried) {
    TestServer test;
    test.transport.error = QStringLiteral("Too many open files");
    test.server->start();
    EXPECT_EQ(test.statuses, QStringList{QStringLiteral("error: Too many open files")});
    test.run();
    test.main.pass(60s);
    EXPECT_EQ(test.transport.ports.size(), 1U);
}

TEST(Listening, AFailedListenerIsReportedAndTriedAgainEveryFiveSeconds) {
    TestServer test;
    test.server->start();
    test.run();
    for (std::size_t attempt = 0; attempt < 3; ++attempt) {
        test.transport.listeners[attempt]->report(
            {Listener::State::failed, QStringLiteral("Address already in use")});
        test.run();
        EXPECT_EQ(test.statuses.last(), QStringLiteral("failed – Address already in use"));
        test.main.pass(4999ms);
        EXPECT_EQ(test.transport.listeners.size(), attempt + 1);
        test.main.pass(1ms);
        test.run();
        ASSERT_EQ(test.transport.listeners.size(), attempt + 2);
        EXPECT_TRUE(test.transport.listeners[attempt]->isCancelled);
        EXPECT_EQ(test.statuses.last(), QStringLiteral("stopped"));
    }
}

TEST(Listening, ARetryIsScheduledWithoutAStatusCallbackToo) {
    TestServer test;
    test.server->onStatusChange = {};
    test.server->start();
    test.run();
    test.transport.listeners[0]->report({Listener::State::failed, QStringLiteral("x")});
    test.run();
    test.main.pass(5s);
    EXPECT_EQ(test.transport.listeners.size(), 2U);
}

TEST(Listening, ARetryDoesNothingOnceTheServerIsGone) {
    TestServer test;
    test.server->start();
    test.run();
    test.transport.listeners[0]->report({Listener::State::failed, QStringLiteral("x")});
    test.run();
    test.server.reset();
    test.main.pass(5s);
    EXPECT_EQ(test.transport.listeners.size(), 1U);
}

TEST(Listening, StartOnARunningServerReportsInOrder) {
    TestServer test;
    const auto phone = test.connectPhone();
    test.server->start();
    test.run();
    test.transport.listeners[1]->report({Listener::State::ready, {}});
    test.run();
    EXPECT_TRUE(phone->isCancelled);
    EXPECT_EQ(test.statuses, (QStringList{QStringLiteral("stopped"), QStringLiteral("listening on :8765")}));
    EXPECT_EQ(test.fake.log.lines().last(), prefix + " cancelled");
}

TEST(Connections, AcceptAndStatesAreLogged) {
    TestServer test;
    test.server->start();
    test.run();
    const auto phone = test.transport.connect();
    test.run();
    phone->report({State::ready, {}});
    test.run();
    phone->report({State::failed, "Connection reset by peer"});
    test.run();
    EXPECT_THAT(test.fake.log.lines(),
                ElementsAre("[WebSocketServer] Incoming connection from 192.168.1.7:40312",
                            prefix + " state changed to preparing", prefix + " state changed to ready",
                            prefix + " is ready (handshake complete)",
                            prefix + " state changed to failed(Connection reset by peer)",
                            prefix + " failed: Connection reset by peer"));
}

TEST(Connections, AFailedOneIsNotCancelled) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->report({State::failed, "x"});
    test.run();
    EXPECT_FALSE(phone->isCancelled);
}

TEST(Greeting, NamesTheComputer) {
    TestServer test;
    test.fake.computerName.name = QStringLiteral("Ann's \"Desk\" 🖥");
    const auto phone = test.connectPhone();
    ASSERT_EQ(phone->sent.size(), 1U);
    const auto json = QJsonDocument::fromJson(phone->sent[0]).object();
    EXPECT_EQ(json.size(), 2);
    EXPECT_EQ(json[u"action"], QStringLiteral("connected"));
    EXPECT_EQ(json[u"deviceName"], test.fake.computerName.name);
}

TEST(Greeting, SaysMacWhereTheComputerHasNoName) {
    TestServer test;
    test.fake.computerName.name.clear();
    const auto phone = test.connectPhone();
    EXPECT_EQ(QJsonDocument::fromJson(phone->sent[0]).object()[u"deviceName"], QStringLiteral("Mac"));
}

TEST(Greeting, GoesToTheNewConnectionAlone) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    EXPECT_EQ(first->sent.size(), 1U);
    EXPECT_EQ(second->sent.size(), 1U);
}

TEST(Greeting, ArmsTheReceiveAndTellsTheStoreTheAddress) {
    TestServer test;
    const auto phone = test.connectPhone();
    EXPECT_TRUE(phone->isReceiveArmed());
    EXPECT_EQ(test.store->connectedRemoteIP.get(), QStringLiteral("192.168.1.7"));
}

TEST(Greeting, APeerWithoutAnAddressLeavesTheStoredOneAlone) {
    TestServer test;
    test.server->start();
    test.run();
    const auto peer = test.transport.connect(Endpoint{"somebody", {}});
    test.run();
    peer->report({State::ready, {}});
    test.run();
    EXPECT_EQ(test.store->connectedRemoteIP.get(), std::nullopt);
    EXPECT_EQ(peer->sent.size(), 1U);
}

TEST(Receiving, ACompleteMessageIsLoggedWithItsSizeAndTheReceiveArmedAgain) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->deliver("{}");
    test.run();
    EXPECT_EQ(test.fake.log.lines().last(),
              "[WebSocketServer] Received complete message of 2 bytes from 192.168.1.7:40312");
    EXPECT_EQ(phone->receives, 2);
    EXPECT_TRUE(phone->isReceiveArmed());
}

TEST(Receiving, PartsAreGatheredIntoOneMessage) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->deliver({.data = MessageBuffer(R"({"action":"connected",)"), .isWebSocketMessage = true});
    test.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
    phone->deliver(R"("deviceName":"Pixel"})");
    test.run();
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
    EXPECT_EQ(test.fake.log.count("Received complete message"), 1);
}

TEST(Receiving, PartsOfTwoPhonesDoNotMix) {
    TestServer test;
    const auto first = test.connectPhone();
    const auto second = test.connectPhone();
    first->deliver({.data = MessageBuffer(R"({"action":"connected",)"), .isWebSocketMessage = true});
    second->deliver(R"({"action":"device_info","wifiName":"Home"})");
    first->deliver(R"("deviceName":"Pixel"})");
    test.run();
    EXPECT_EQ(test.store->connectedWifiName.get(), QStringLiteral("Home"));
    EXPECT_EQ(test.store->connectedDeviceName.get(), QStringLiteral("Pixel"));
}

TEST(Receiving, AnEmptyMessageLogsNothingAndArmsTheReceiveAgain) {
    TestServer test;
    const auto phone = test.connectPhone();
    const auto before = test.fake.log.lines();
    phone->deliver("");
    test.run();
    phone->deliver({.isWebSocketMessage = true, .isComplete = true});
    test.run();
    EXPECT_EQ(test.fake.log.lines(), before);
    EXPECT_EQ(phone->receives, 3);
}

TEST(Receiving, BytesWithoutWebSocketMetadataAreLoggedAndDropped) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->deliver({.data = MessageBuffer("no json"), .isComplete = true});
    test.run();
    EXPECT_EQ(test.fake.log.lines().last(),
              "[WebSocketServer] Received complete message of 7 bytes from 192.168.1.7:40312");
    EXPECT_TRUE(phone->isReceiveArmed());
}

TEST(Receiving, AnErrorIsLoggedAndEndsTheLoop) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->deliver({.data = MessageBuffer(R"({"action":"connected","deviceName":"Lost"})"),
                    .isWebSocketMessage = true,
                    .isComplete = true,
                    .error = "End of file"});
    test.run();
    EXPECT_EQ(test.fake.log.lines().last(),
              "[WebSocketServer] Receive error from 192.168.1.7:40312: End of file");
    EXPECT_FALSE(phone->isReceiveArmed());
    EXPECT_EQ(test.store->connectedDeviceName.get(), std::nullopt);
}

TEST(Receiving, ABrokenConnectionIsSentToUntilItsStateChanges) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->deliver({.error = "End of file"});
    test.run();
    test.server->send("a");
    test.run();
    EXPECT_EQ(phone->sent.size(), 2U);
    phone->report({State::failed, "End of file"});
    test.run();
    test.server->send("b");
    test.run();
    EXPECT_EQ(phone->sent.size(), 2U);
}
