#include "platform/linux/input/PortalPlayer.h"

#include "platform/linux/input/PortalSession.h"
#include "platform/linux/input/TextLender.h"

#include "fakes/EventLoop.h"

#include <QDBusServer>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

/// Lends when the test says so.
class SlowLender final : public TextLender {
public:
    void lend(const QString& /*text*/, std::move_only_function<void(bool)> lent) override {
        isLent = true;
        answer = std::move(lent);
    }
    void giveBack() override { isLent = false; }

    bool isLent = false;
    std::move_only_function<void(bool)> answer;
};

/// A player whose portal answers each event with an error, over a bus that knows nobody.
struct PortalPlayerTest : testing::Test, EventLoop {
    PortalPlayerTest() { qputenv("WAYLAND_DISPLAY", "/nowhere"); }
    ~PortalPlayerTest() override { QDBusConnection::disconnectFromPeer(QStringLiteral("portal")); }
    PortalPlayerTest(const PortalPlayerTest&) = delete;
    PortalPlayerTest& operator=(const PortalPlayerTest&) = delete;

    void type(const QString& text) {
        events.add(KeyEvent{.isDown = true, .text = text});
        player.advance();
        turnUntil([this] { return lender.isLent; });
    }

    QDBusServer server;
    QDBusConnection bus = QDBusConnection::connectToPeer(server.address(), QStringLiteral("portal"));
    PortalSession session{bus};
    PostedEvents events;
    SlowLender lender;
    PortalPlayer player{bus, session, events, &lender};
};

} // namespace

TEST_F(PortalPlayerTest, ALoanThatIsUnderWayWhenTheSessionEndsIsGivenBack) {
    player.begin();
    type(QStringLiteral("漢字"));
    player.end();
    EXPECT_FALSE(lender.isLent);
    lender.answer(true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(lender.isLent);
}

TEST_F(PortalPlayerTest, ALoanThatStandsWhenTheNextTextIsUnderWayIsGivenBackToo) {
    player.begin();
    type(QStringLiteral("漢字"));
    lender.answer(true);
    lender.isLent = false; // to see the second call
    type(QStringLiteral("かな"));
    player.end();
    EXPECT_FALSE(lender.isLent);
}

TEST_F(PortalPlayerTest, ALoanOfWhichAProgramWasToldIsGivenBackWhenItHasHadItsTime) {
    player.begin();
    type(QStringLiteral("漢字"));
    lender.answer(true);
    QCoreApplication::processEvents();
    player.end();
    EXPECT_TRUE(lender.isLent);
    turnUntil([this] { return !lender.isLent; });
}

TEST_F(PortalPlayerTest, WithoutALoanNothingIsGivenBack) {
    player.begin();
    lender.isLent = true;
    player.end();
    EXPECT_TRUE(lender.isLent);
}
