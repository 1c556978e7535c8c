#include "Phone.h"
#include "ClientFrames.h"
#include "Printing.h"
#include "TestDesktop.h"

#include <boost/asio/error.hpp>
#include <boost/beast/websocket/error.hpp>

#include <atomic>
#include <future>
#include <thread>

#include <gtest/gtest.h>

namespace brenvale {
namespace {

using namespace std::chrono_literals;

const QString loopback = QStringLiteral("127.0.0.1");

class PhoneTest : public testing::Test {
protected:
    /// The desktop accepts on a thread of its own, as both sides wait for each other.
    void connect() {
        bool isAccepted = false;
        std::jthread accepting([this, &isAccepted] { isAccepted = desktop_.accept(); });
        const auto connected = phone_.connect(loopback, desktop_.port());
        accepting.join();
        ASSERT_TRUE(connected.has_value()) << connected.error().toStdString();
        ASSERT_TRUE(isAccepted);
    }

    phone::TestDesktop desktop_;
    Phone phone_;
};

TEST_F(PhoneTest, ConnectingToNobodyFailsWithAReason) {
    quint16 deadPort = 0;
    {
        const phone::TestDesktop gone;
        deadPort = gone.port();
    }
    const auto connected = phone_.connect(loopback, deadPort);
    ASSERT_FALSE(connected.has_value());
    EXPECT_FALSE(connected.error().isEmpty());
    EXPECT_FALSE(phone_.isConnected());
}

TEST_F(PhoneTest, ConnectingToADesktopThatDoesNotAnswerRunsOutOfTime) {
    // The system takes the connection, but nobody shakes hands.
    const auto connected = phone_.connect(loopback, desktop_.port(), 100ms);
    ASSERT_FALSE(connected.has_value());
    EXPECT_EQ(connected.error(), QStringLiteral("no answer in time"));
}

TEST_F(PhoneTest, MessagesArriveInTheOrderOfTheCalls) {
    connect();
    phone_.sendText("one");
    phone_.sendBinary("two");
    phone_.sendFragments({"thr", "", "ee"});
    phone_.sendPrepared(phone::textFrames({"four", QByteArray(70'000, 'x')}));
    phone_.sendText("");
    EXPECT_EQ(desktop_.read(), "one");
    EXPECT_TRUE(desktop_.wasText());
    EXPECT_EQ(desktop_.read(), "two");
    EXPECT_FALSE(desktop_.wasText());
    EXPECT_EQ(desktop_.read(), "three");
    EXPECT_TRUE(desktop_.wasText());
    EXPECT_EQ(desktop_.read(), "four");
    EXPECT_EQ(desktop_.read(), QByteArray(70'000, 'x'));
    EXPECT_EQ(desktop_.read(), "");
}

TEST_F(PhoneTest, MessagesAreKeptUntilSomebodyWaitsForThem) {
    connect();
    desktop_.send("one");
    desktop_.send(QByteArray(3'000'000, 'y'));
    EXPECT_EQ(phone_.waitForMessage(), "one");
    EXPECT_EQ(phone_.waitForMessage(), QByteArray(3'000'000, 'y'));
    EXPECT_EQ(phone_.waitForMessage(20ms), std::nullopt);
}

TEST(Phone, HandlerTakesTheMessages) {
    phone::TestDesktop desktop;
    std::atomic<int> count = 0;
    Phone phone;
    phone.onMessage([&count](const QByteArray&) { ++count; });
    const std::jthread accepting([&desktop] {
        desktop.accept();
        desktop.send("a");
        desktop.send("b");
        desktop.read();
    });
    ASSERT_TRUE(phone.connect(loopback, desktop.port()).has_value());
    while (count < 2) {
        std::this_thread::yield();
    }
    EXPECT_EQ(phone.waitForMessage(0ms), std::nullopt);
    phone.abort();
}

TEST_F(PhoneTest, CloseSaysGoodbyeAfterAllThatWasSent) {
    connect();
    phone_.sendText("last");
    const std::jthread reading([this] {
        EXPECT_EQ(desktop_.read(), "last");
        EXPECT_EQ(desktop_.read(), std::nullopt);
        EXPECT_EQ(desktop_.error(), boost::beast::websocket::error::closed);
    });
    EXPECT_TRUE(phone_.close());
    EXPECT_FALSE(phone_.isConnected());
}

TEST_F(PhoneTest, CloseGivesUpOnADesktopThatDoesNotAnswer) {
    connect();
    EXPECT_FALSE(phone_.close(50ms));
    EXPECT_FALSE(phone_.isConnected());
}

TEST_F(PhoneTest, AbortIsAResetToTheDesktop) {
    connect();
    phone_.abort();
    EXPECT_TRUE(phone_.waitForClosed());
    EXPECT_EQ(desktop_.read(), std::nullopt);
    EXPECT_EQ(desktop_.error(), boost::asio::error::connection_reset);
}

TEST_F(PhoneTest, EndByTheDesktopIsHeardOnce) {
    std::atomic<int> count = 0;
    phone_.onClosed([&count](const QString&) { ++count; });
    connect();
    desktop_.drop();
    EXPECT_TRUE(phone_.waitForClosed());
    EXPECT_FALSE(phone_.close()) << "no goodbye any more";
    phone_.sendText("nobody hears this");
    EXPECT_FALSE(phone_.waitUntilSent(20ms));
    EXPECT_EQ(count, 1);
}

TEST_F(PhoneTest, GoodbyeOfTheDesktopIsAnswered) {
    connect();
    desktop_.close();
    EXPECT_FALSE(desktop_.error());
    EXPECT_TRUE(phone_.waitForClosed());
}

TEST_F(PhoneTest, PhoneConnectsAgainAfterALoss) {
    connect();
    desktop_.drop();
    EXPECT_TRUE(phone_.waitForClosed());
    connect();
    phone_.sendText("again");
    EXPECT_EQ(desktop_.read(), "again");
}

TEST_F(PhoneTest, PingIsAnswered) {
    std::promise<QByteArray> pong;
    phone_.onPong([&pong](const QByteArray& payload) { pong.set_value(payload); });
    connect();
    const std::jthread reading([this] { desktop_.read(); });
    phone_.ping(QByteArray(200, 'p'));
    auto answer = pong.get_future();
    ASSERT_EQ(answer.wait_for(5s), std::future_status::ready);
    EXPECT_EQ(answer.get(), QByteArray(125, 'p'));
    phone_.abort();
}

TEST_F(PhoneTest, PausedPhoneTakesNoMoreThanOneRead) {
    connect();
    phone_.pauseReading();
    EXPECT_TRUE(phone_.waitUntilSent()) << "the pause has reached the phone's thread";
    desktop_.send("one");
    desktop_.send("two");
    (void)phone_.waitForMessage(50ms);
    EXPECT_EQ(phone_.waitForMessage(50ms), std::nullopt);
    phone_.resumeReading();
    EXPECT_EQ(phone_.waitForMessage(), "two");
}

TEST_F(PhoneTest, WaitUntilSentWaitsForASlowDesktop) {
    connect();
    // More than the sockets of both sides hold.
    phone_.sendPrepared(phone::textFrames({QByteArray(67'108'864, 'z')}));
    EXPECT_FALSE(phone_.waitUntilSent(50ms));
    const std::jthread reading([this] { desktop_.read(); });
    EXPECT_TRUE(phone_.waitUntilSent());
}

} // namespace
} // namespace brenvale
