#include "fakes/TestDelegate.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct RepliesTest : testing::Test, TestDelegate {
    RepliesTest() {
        delegate.applicationDidFinishLaunching();
        phone = connectPhone();
        run();
        phone->sent.clear();
    }

    void respond(const NotificationResponse& response) {
        fake.userNotificationCenter.delegate->userNotificationCenterDidReceive(response);
        run();
    }
};

} // namespace

TEST_F(RepliesTest, OneCategoryWithOneTextInputActionIsRegistered) {
    const auto& categories = fake.userNotificationCenter.categories;
    ASSERT_EQ(categories.size(), 1);
    EXPECT_EQ(categories.front().identifier, QStringLiteral("REPLY_CATEGORY"));
    ASSERT_EQ(categories.front().actions.size(), 1);
    const auto& action = categories.front().actions.front();
    EXPECT_EQ(action.identifier, QStringLiteral("REPLY_ACTION"));
    EXPECT_EQ(action.title, QStringLiteral("Reply"));
    EXPECT_EQ(action.textInputButtonTitle, QStringLiteral("Send"));
    EXPECT_EQ(action.textInputPlaceholder, QStringLiteral("Type your reply..."));
}

TEST_F(RepliesTest, AReplyGoesToThePhoneWithTheRequestsIdentifierAsKeyAndTheTextAsTyped) {
    respond(
        {QStringLiteral("REPLY_ACTION"), QStringLiteral("0|chat|7"), QStringLiteral("  on \"my\" way\n")});
    ASSERT_EQ(phone->sent.size(), 1U);
    EXPECT_EQ(QJsonDocument::fromJson(phone->sent.front()).object(),
              QJsonObject({{"action", "reply"}, {"key", "0|chat|7"}, {"message", "  on \"my\" way\n"}}));
}

TEST_F(RepliesTest, AnEmptyTextIsSentLikeAnyOther) {
    respond({QStringLiteral("REPLY_ACTION"), QStringLiteral("k"), QString()});
    ASSERT_EQ(phone->sent.size(), 1U);
    EXPECT_EQ(QJsonDocument::fromJson(phone->sent.front()).object().value("message"), QJsonValue(""));
}

TEST_F(RepliesTest, WithoutAKeyTheJoinedTextIsTheKey) {
    receive(R"({"app":"Chat","title":"Ann","body":"Hi"})");
    const auto identifier = fake.userNotificationCenter.added.back().identifier.text();
    respond({QStringLiteral("REPLY_ACTION"), identifier, QStringLiteral("Hello")});
    EXPECT_EQ(QJsonDocument::fromJson(phone->sent.back()).object().value("key"), QJsonValue("Chat:Ann:Hi"));
}

TEST_F(RepliesTest, OtherActionsAndResponsesWithoutATextSendNothing) {
    respond({QStringLiteral("default"), QStringLiteral("k"), QStringLiteral("text")});
    respond({QStringLiteral("REPLY_ACTION"), QStringLiteral("k"), std::nullopt});
    EXPECT_TRUE(phone->sent.empty());
}

TEST_F(RepliesTest, OnlyForwardedNotificationsCanBeAnswered) {
    receive(R"({"app":"Chat","title":"Ann","body":"Hi"})");
    EXPECT_EQ(fake.userNotificationCenter.added.back().content.categoryIdentifier,
              QStringLiteral("REPLY_CATEGORY"));
    receive(R"({"action":"clipboard","text":"copied"})");
    receive(R"({"action":"file_transfer_start","fileName":"a.txt","fileSize":1})");
    ASSERT_EQ(fake.userNotificationCenter.added.size(), 3U);
    EXPECT_TRUE(fake.userNotificationCenter.added[1].content.categoryIdentifier.isEmpty());
    EXPECT_TRUE(fake.userNotificationCenter.added[2].content.categoryIdentifier.isEmpty());
}

TEST_F(RepliesTest, NotificationsShowWhileTheProgramIsInFront) {
    const auto options = fake.userNotificationCenter.delegate->userNotificationCenterWillPresent({});
    EXPECT_TRUE(options.banner);
    EXPECT_TRUE(options.sound);
    EXPECT_TRUE(options.badge);
}
