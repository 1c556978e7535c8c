#include "calls/CallNotification.h"

#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"
#include "fakes/TestServer.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Notes what is shown; "" for closing.
class FakeActionNotification final : public ActionNotification {
public:
    explicit FakeActionNotification(std::vector<Content>& shown) : shown_(shown) {}

    void show(const Content& content) override { shown_.push_back(content); }
    void close() override { shown_.push_back({}); }

private:
    std::vector<Content>& shown_;
};

struct CallNotificationTest : testing::Test, TestServer {
    CallNotificationTest() {
        incoming.onAnswer = [this] {
            pressed.append(QStringLiteral("answer"));
        };
        incoming.onHangup = [this] {
            pressed.append(QStringLiteral("hang up"));
        };
        phone = connectPhone();
        phone->sent.clear();
    }

    /// Has a notification for the banner, and gives what it stands on.
    template <typename Banner>
    FakeActionNotification& announce(Banner& banner) {
        auto made = std::make_unique<FakeActionNotification>(shown);
        auto& notification = *made;
        panel = std::make_unique<CallNotification>(banner, std::move(made));
        panel->orderFrontRegardless();
        return notification;
    }

    [[nodiscard]] std::vector<QByteArray> takeSent() {
        run();
        return std::exchange(phone->sent, {});
    }

    IncomingCallBanner incoming{{.number = QStringLiteral("17"), .name = QStringLiteral("Ann")}};
    ActiveCallBanner active{
        {.number = QStringLiteral("17"), .name = QStringLiteral("Ann")}, fake.internalNotifications, *server};
    std::vector<ActionNotification::Content> shown;
    QStringList pressed;
    std::unique_ptr<CallNotification> panel;
};

} // namespace

TEST_F(CallNotificationTest, ARingingCallIsAnnouncedWithBothButtons) {
    announce(incoming);
    EXPECT_THAT(shown, ElementsAre(ActionNotification::Content{
                           .title = QStringLiteral("Ann"),
                           .body = QStringLiteral("17\nIncoming Call"),
                           .actions = {QStringLiteral("Decline"), QStringLiteral("Accept")}}));
}

TEST_F(CallNotificationTest, ItsButtonsAreThoseOfTheBanner) {
    auto& notification = announce(incoming);
    notification.pressed(QStringLiteral("Accept"));
    notification.pressed(QStringLiteral("default"));
    notification.pressed(QStringLiteral("Decline"));
    EXPECT_THAT(pressed, ElementsAre(QStringLiteral("answer"), QStringLiteral("hang up")));
}

TEST_F(CallNotificationTest, AnotherRingShowsWhatTheBannerSaysNow) {
    announce(incoming);
    incoming.setInfo({.number = QStringLiteral("unknown")});
    panel->orderFrontRegardless();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[1].title, QStringLiteral("Unknown Caller"));
    EXPECT_EQ(shown[1].body, QStringLiteral("Incoming Call"));
}

TEST_F(CallNotificationTest, ItGoesWithTheBanner) {
    announce(incoming);
    panel->orderOut();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[1], ActionNotification::Content{});
}

TEST_F(CallNotificationTest, ARunningCallIsMutedAndEnded) {
    auto& notification = announce(active);
    EXPECT_EQ(shown[0].actions, QStringList({QStringLiteral("Mute"), QStringLiteral("End call")}));
    notification.pressed(QStringLiteral("Mute"));
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[1].actions, QStringList({QStringLiteral("Unmute"), QStringLiteral("End call")}));
    notification.pressed(QStringLiteral("Mute")); // pressed before the change was on the screen
    notification.pressed(QStringLiteral("End call"));
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"toggle_mute","enabled":true})", R"({"action":"hangup_call"})"));
}

TEST_F(CallNotificationTest, TheClockBringsItUpNoSecondTime) {
    announce(active);
    fake.internalNotifications.post(InternalNotifications::callDurationUpdated, qint64{5});
    EXPECT_EQ(shown.size(), 1);
}
