#include "platform/linux/NotifyCall.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

const NotificationContent mail{
    .title = QStringLiteral("Mail"), .subtitle = QStringLiteral("A & B"), .body = QStringLiteral("1 < 2")};

const NotificationCategory replies{.identifier = QStringLiteral("REPLIES"),
                                   .actions = {{.identifier = QStringLiteral("REPLY"),
                                                .title = QStringLiteral("Reply"),
                                                .textInputButtonTitle = QStringLiteral("Send"),
                                                .textInputPlaceholder = QStringLiteral("Type...")}}};

} // namespace

TEST(NotifyCall, AServerWithAFieldGetsTheFieldAndItsTexts) {
    const auto call = notifyCall(mail, &replies, {QStringLiteral("actions"), QStringLiteral("inline-reply")});
    EXPECT_EQ(call.actions, QStringList({"inline-reply", "Reply"}));
    EXPECT_EQ(call.hints.value(QStringLiteral("x-kde-reply-placeholder-text")), QStringLiteral("Type..."));
    EXPECT_EQ(call.hints.value(QStringLiteral("x-kde-reply-submit-button-text")), QStringLiteral("Send"));
}

TEST(NotifyCall, AServerWithActionsGetsTheActionAlone) {
    const auto call = notifyCall(mail, &replies, {QStringLiteral("actions")});
    EXPECT_EQ(call.actions, QStringList({"REPLY", "Reply"}));
    EXPECT_FALSE(call.hints.contains(QStringLiteral("x-kde-reply-placeholder-text")));
}

TEST(NotifyCall, AServerWithoutActionsGetsNone) {
    EXPECT_TRUE(notifyCall(mail, &replies, {QStringLiteral("body")}).actions.isEmpty());
}

TEST(NotifyCall, ANotificationOfNoCategoryOffersNothing) {
    EXPECT_TRUE(notifyCall(mail, nullptr, {QStringLiteral("actions"), QStringLiteral("inline-reply")})
                    .actions.isEmpty());
}

TEST(NotifyCall, WhereAClickWouldOpenTheProgramItHasAnActionThatDoesNothing) {
    const QSet<QString> capabilities{QStringLiteral("actions")};
    EXPECT_EQ(notifyCall(mail, &replies, capabilities, true).actions,
              QStringList({"REPLY", "Reply", "default", ""}));
    EXPECT_EQ(notifyCall(mail, nullptr, capabilities, true).actions, QStringList({"default", ""}));
    EXPECT_TRUE(notifyCall(mail, nullptr, {}, true).actions.isEmpty());
}

TEST(NotifyCall, TextIsEscapedOnlyWhereTheServerReadsMarkup) {
    EXPECT_EQ(notifyCall(mail, nullptr, {QStringLiteral("body-markup")}).body,
              QStringLiteral("<b>A &amp; B</b>\n1 &lt; 2"));
    EXPECT_EQ(notifyCall(mail, nullptr, {}).body, QStringLiteral("A & B\n1 < 2"));
}

TEST(NotifyCall, SoundAndThreadAreHints) {
    auto loud = mail;
    loud.hasDefaultSound = true;
    loud.threadIdentifier = QStringLiteral("Chat");
    const auto hints = notifyCall(loud, nullptr, {}).hints;
    EXPECT_EQ(hints.value(QStringLiteral("sound-name")), QStringLiteral("message-new-instant"));
    EXPECT_EQ(hints.value(QStringLiteral("x-kde-origin-name")), QStringLiteral("Chat"));
    EXPECT_EQ(hints.value(QStringLiteral("desktop-entry")), QStringLiteral("org.brenvale.Brenvale"));
    EXPECT_FALSE(hints.contains(QStringLiteral("suppress-sound")));
    EXPECT_EQ(notifyCall(mail, nullptr, {}).hints.value(QStringLiteral("suppress-sound")), QVariant(true));
}
