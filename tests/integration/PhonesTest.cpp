#include "ClientFrames.h"
#include "integration/LiveServer.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <thread>

using namespace brenvale;
using namespace std::chrono_literals;

namespace {

QByteArray notification(int number) {
    return R"({"app":"App","title":"T","body":")" + QByteArray::number(number) + "\"}";
}

} // namespace

using Phones = LiveServer;

TEST_F(Phones, AreGreetedAlike) {
    start();
    Phone first;
    Phone second;
    for (auto* phone : {&first, &second}) {
        ASSERT_TRUE(phone->connect(QStringLiteral("127.0.0.1"), server->port()).has_value());
        const auto greeting = phone->waitForMessage();
        ASSERT_TRUE(greeting.has_value());
        EXPECT_EQ(QJsonDocument::fromJson(*greeting).object()[u"deviceName"], QStringLiteral("Desk"));
    }
}

TEST_F(Phones, TextBinaryAndFragmentsAreTreatedAlike) {
    start();
    Phone phone;
    greet(phone);
    phone.sendText(R"({"action":"device_info","wifiName":"text"})");
    EXPECT_TRUE(waitUntil([this] { return store->connectedWifiName.get() == QStringLiteral("text"); }));
    phone.sendBinary(R"({"action":"device_info","wifiName":"binary"})");
    EXPECT_TRUE(waitUntil([this] { return store->connectedWifiName.get() == QStringLiteral("binary"); }));
    phone.sendFragments({R"({"action":"device_)", "info\",\"wifi", "", R"(Name":"fragments"})"});
    EXPECT_TRUE(waitUntil([this] { return store->connectedWifiName.get() == QStringLiteral("fragments"); }));
}

TEST_F(Phones, ThousandsOfMessagesArriveInOrder) {
    constexpr int count = 3000;
    start();
    QStringList bodies;
    const auto subscription = store->items.subscribe([&](const auto& items) {
        if (!items.isEmpty() && (bodies.isEmpty() || bodies.last() != items.front().body)) {
            bodies.append(items.front().body);
        }
    });
    Phone phone;
    greet(phone);
    QList<QByteArray> messages;
    for (int i = 0; i < count; ++i) {
        messages.append(notification(i));
    }
    phone.sendPrepared(phone::textFrames(messages));
    ASSERT_TRUE(waitUntil([&] { return bodies.size() == count; })) << bodies.size();
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(bodies[i], QString::number(i));
    }
}

TEST_F(Phones, AllGetWhatIsSentInOrder) {
    constexpr int count = 500;
    start();
    Phone first;
    Phone second;
    greet(first);
    greet(second);
    for (int i = 0; i < count; ++i) {
        server->send(QByteArray::number(i));
    }
    for (auto* phone : {&first, &second}) {
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(phone->waitForMessage(), QByteArray::number(i));
        }
    }
}

TEST_F(Phones, AStalledOneDelaysNeitherTheOthersNorTheQueue) {
    start();
    Phone stalled;
    Phone lively;
    greet(stalled);
    greet(lively);
    stalled.pauseReading();
    const QByteArray block(1 << 20, 'x');
    for (int i = 0; i < 64; ++i) {
        server->send(block);
    }
    server->send("end");
    int blocks = 0;
    for (auto message = lively.waitForMessage(); message == block; message = lively.waitForMessage()) {
        ++blocks;
    }
    EXPECT_EQ(blocks, 64);
    lively.sendText(R"({"action":"connected","deviceName":"Lively"})");
    EXPECT_TRUE(waitUntil([this] { return store->connectedDeviceName.get() == QStringLiteral("Lively"); }));
    stalled.resumeReading();
    blocks = 0;
    auto message = stalled.waitForMessage();
    for (; message == block; message = stalled.waitForMessage()) {
        ++blocks;
    }
    EXPECT_EQ(blocks, 64);
    EXPECT_EQ(message, "end");
}

TEST_F(Phones, OneThatIsLostAbruptlyIsForgotten) {
    start();
    Phone phone;
    greet(phone);
    ASSERT_TRUE(waitUntil([this] { return store->connectedRemoteIP.get().has_value(); }));
    phone.abort();
    EXPECT_TRUE(waitForLog("Receive error from "));
    EXPECT_TRUE(waitForLog(" state changed to failed("));
    EXPECT_TRUE(waitForLog(" failed: "));
    EXPECT_TRUE(waitUntil([this] { return !store->connectedRemoteIP.get(); }));
}

TEST_F(Phones, OneThatIsLostWhileItIsSentToFailsItsSends) {
    start();
    Phone phone;
    greet(phone);
    phone.pauseReading();
    for (int i = 0; i < 32; ++i) {
        server->send(QByteArray(1 << 20, 'x'));
    }
    phone.abort();
    EXPECT_TRUE(waitForLog("Send error: "));
    EXPECT_TRUE(waitForLog(" failed: "));
}

TEST_F(Phones, AMessageBeyondTheLimitEndsTheConnection) {
    start();
    Phone phone;
    greet(phone);
    // Only the head of a frame of 128 MiB and one byte: that alone is refused.
    phone.sendPrepared(QByteArray::fromHex("81ff0000000008000001") + QByteArray(4, '\0'));
    EXPECT_TRUE(phone.waitForClosed());
    EXPECT_TRUE(waitForLog("Receive error from 127.0.0.1:"));
    EXPECT_TRUE(waitForLog(" failed: message too big"));
}

TEST_F(Phones, ComeAndGoWhileThreadsSend) {
    start();
    const auto send = [this] {
        for (int i = 0; i < 2000; ++i) {
            server->send("{}");
        }
    };
    {
        const std::jthread firstSender(send);
        const std::jthread secondSender(send);
        for (int i = 0; i < 20; ++i) {
            Phone phone;
            greet(phone);
            phone.sendText(notification(i));
            if (i % 2 == 0) {
                phone.abort();
            } else {
                phone.close();
            }
        }
    }
    EXPECT_TRUE(waitUntil([this] { return !store->connectedRemoteIP.get(); }));
    EXPECT_TRUE(waitForLog("Incoming connection", 20));
}
