#include "ClientFrames.h"
#include "integration/LiveServer.h"
#include "integration/RawClient.h"

#include <QSysInfo>

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

const QByteArray accepted = "HTTP/1.1 101 Switching Protocols\r\n";
const QByteArray forbidden = "HTTP/1.1 403 Forbidden\r\n";

QByteArray fromPage(const QByteArray& name) {
    return handshake("Origin: http://" + name + "\r\n", name);
}

} // namespace

using Handshakes = LiveServer;

TEST_F(Handshakes, TheAnswerHasTheProtocolsOwnHeadersAndNoOther) {
    start();
    const RawClient client(server->port());
    auto lines = client.answerTo(handshake()).split('\n');
    EXPECT_EQ(lines.takeFirst() + '\n', accepted);
    EXPECT_THAT(lines, testing::UnorderedElementsAre("Upgrade: websocket\r", "Connection: upgrade\r",
                                                     "Sec-WebSocket-Accept: s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r",
                                                     "\r", ""));
}

TEST_F(Handshakes, ARefusalByTheProtocolDoesNotNameTheServerEither) {
    start();
    const RawClient client(server->port());
    const auto answer = client.answerTo("GET / HTTP/1.1\r\nHost: 192.168.1.2\r\n\r\n");
    EXPECT_TRUE(answer.startsWith("HTTP/1.1 4")) << answer.toStdString();
    EXPECT_FALSE(answer.contains("Server:")) << answer.toStdString();
    EXPECT_TRUE(waitForLog(" state changed to failed("));
}

TEST_F(Handshakes, TheFirstFrameMayComeInTheSegmentOfTheRequest) {
    start();
    const RawClient client(server->port());
    const auto frame = phone::textFrames({R"({"action":"device_info","wifiName":"early"})"});
    EXPECT_TRUE(client.answerTo(handshake() + frame).startsWith(accepted));
    EXPECT_TRUE(waitUntil([this] { return store->connectedWifiName.get() == QStringLiteral("early"); }));
}

TEST_F(Handshakes, ARequestInPiecesIsReadAsOne) {
    start();
    const RawClient client(server->port());
    for (const auto& line : handshake().split('\n').mid(0, 3)) {
        client.send(line + '\n');
    }
    EXPECT_TRUE(waitForLog(" state changed to preparing"));
    EXPECT_TRUE(client.answerTo(handshake().split('\n').mid(3).join('\n')).startsWith(accepted));
}

TEST_F(Handshakes, ARequestThatIsTooLongIsRefusedWithAReasonForPeople) {
    start();
    const RawClient client(server->port());
    const auto answer = client.answerTo("GET / HTTP/1.1\r\nCookie: " + QByteArray(8192 - 24, 'x'));
    EXPECT_TRUE(answer.startsWith("HTTP/1.1 431 ")) << answer.toStdString();
    EXPECT_TRUE(client.isEnded());
    EXPECT_TRUE(waitForLog(" state changed to failed(request too long)"));
    EXPECT_TRUE(waitForLog(" failed: request too long"));
}

TEST_F(Handshakes, ARefusalReachesAClientThatIsStillSending) {
    start();
    const RawClient client(server->port());
    EXPECT_TRUE(
        client.answerTo("GET / HTTP/1.1\r\nCookie: " + QByteArray(65536, 'x')).startsWith("HTTP/1.1 431 "));
    EXPECT_TRUE(client.isEnded());
}

TEST_F(Handshakes, APageWhoseNameWasMadeToPointHereIsRefused) {
    start();
    const RawClient client(server->port());
    EXPECT_TRUE(client.answerTo(fromPage("evil.example:8765")).startsWith(forbidden));
    EXPECT_TRUE(client.isEnded());
    EXPECT_TRUE(waitForLog(" failed: foreign web origin refused"));
}

TEST_F(Handshakes, APageIsServedByAddressLoopbackOrThisComputersName) {
    start();
    const auto own = QSysInfo::machineHostName().toUtf8();
    for (const auto& host :
         {QByteArray("192.168.1.2:8765"), QByteArray("localhost:8765"), own, own + ".local"}) {
        const RawClient client(server->port());
        EXPECT_TRUE(client.answerTo(fromPage(host)).startsWith(accepted)) << host.toStdString();
    }
}

TEST_F(Handshakes, OneOfTwoHostsDoesNotCoverTheOther) {
    start();
    const RawClient client(server->port());
    EXPECT_TRUE(
        client.answerTo(handshake("Origin: http://evil.example\r\nHost: evil.example\r\n", "evil.example"))
            .startsWith(forbidden));
}

TEST_F(Handshakes, WhoIsNotAllowedIsTurnedAwayBeforeIt) {
    fake.userDefaults.setSection(QStringLiteral("Security"),
                                 {{QStringLiteral("allow"), QStringLiteral("127.0.0.2")}});
    start();
    const RawClient stranger(server->port());
    EXPECT_TRUE(stranger.isEnded()) << "without a word";
    EXPECT_TRUE(waitForLog(" failed: address not allowed"));
    const RawClient friendly(server->port(), "127.0.0.2");
    EXPECT_TRUE(friendly.answerTo(handshake()).startsWith(accepted));
    EXPECT_EQ(fake.log.count("state changed to preparing"), 1);
}
