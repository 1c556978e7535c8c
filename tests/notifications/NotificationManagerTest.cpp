#include "notifications/NotificationManager.h"
#include "fakes/FakePlatform.h"
#include "records/NotifPayload.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Notifications : testing::Test {
    void post(const QString& app, const QString& title, const QString& body,
              std::optional<QString> key = {}) {
        manager.post(
            {.id = QUuid::createUuid(), .app = app, .title = title, .body = body, .key = std::move(key)});
    }

    [[nodiscard]] const NotificationRequest& last() const { return fake.userNotificationCenter.added.back(); }

    FakePlatform fake;
    NotificationManager manager{fake.userNotificationCenter, fake.clock, fake.log};
};

const QString chat = QStringLiteral("Chat");
const QString ann = QStringLiteral("Ann");
const QString number = QStringLiteral("+491701234567");
const QString hi = QStringLiteral("Hi");

} // namespace

using Post = Notifications;
using Repeats = Notifications;
using PostSimple = Notifications;
using PostFileProgress = Notifications;

TEST_F(Post, TheAppIsTheTitleAndTheTitleTheSubtitle) {
    post(chat, ann, QStringLiteral(" Hi "), QStringLiteral("k"));
    EXPECT_EQ(last().identifier.text(), QStringLiteral("k"));
    EXPECT_EQ(last().content.title, chat);
    EXPECT_EQ(last().content.subtitle, ann);
    EXPECT_EQ(last().content.body, QStringLiteral(" Hi ")) << "as it came, untrimmed";
    EXPECT_TRUE(last().content.hasDefaultSound);
    EXPECT_EQ(last().content.threadIdentifier, chat);
    EXPECT_EQ(last().content.categoryIdentifier, QStringLiteral("REPLY_CATEGORY"));
}

TEST_F(Post, WithoutAKnownAppTheTitleIsTheTitle) {
    for (const auto& app : {QString(), QStringLiteral("Unknown")}) {
        post(app, ann, QStringLiteral("of ") + app);
        EXPECT_EQ(last().content.title, ann);
        EXPECT_TRUE(last().content.subtitle.isEmpty());
        EXPECT_EQ(last().content.threadIdentifier, app);
    }
}

TEST_F(Post, WithoutAppAndTitleTheTitleIsBrenvale) {
    post(QString(), QString(), hi);
    EXPECT_EQ(last().content.title, QStringLiteral("Brenvale"));
}

TEST_F(Post, WithoutAKeyTheIdentifierIsJoinedFromAppTitleAndTrimmedBody) {
    post(chat, ann, QStringLiteral(" Hi\t"));
    EXPECT_EQ(last().identifier.text(), QStringLiteral("Chat:Ann:Hi"));
}

TEST_F(Post, AnEmptyKeyIsAKey) {
    post(chat, ann, hi, QStringLiteral(""));
    EXPECT_EQ(last().identifier.text(), QString());
}

TEST_F(Post, AnErrorIsLogged) {
    fake.userNotificationCenter.error = QStringLiteral("no server");
    post(chat, ann, hi);
    EXPECT_THAT(fake.log.lines(), ElementsAre("[Notifications] Post error: no server"));
}

TEST_F(Post, SuccessIsNotLogged) {
    post(chat, ann, hi);
    EXPECT_THAT(fake.log.lines(), IsEmpty());
}

TEST_F(Repeats, ALaterPhoneNumberIsDropped) {
    post(chat, ann, hi);
    fake.clock.time += 1;
    post(QStringLiteral("SMS"), number, hi);
    EXPECT_EQ(fake.userNotificationCenter.titles(), QStringList{chat});
}

TEST_F(Repeats, ADroppedOneDoesNotProlongTheWindow) {
    post(chat, ann, hi);
    fake.clock.time += 2;
    post(QStringLiteral("SMS"), number, hi);
    fake.clock.time += 1.5;
    post(QStringLiteral("SMS"), number, hi);
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 2U);
}

TEST_F(Repeats, ALaterNameTakesThePlaceOfANumber) {
    post(QStringLiteral("SMS"), number, hi, QStringLiteral("k1"));
    fake.clock.time += 1;
    post(chat, ann, hi, QStringLiteral("k2"));
    EXPECT_EQ(fake.userNotificationCenter.titles(), QStringList{chat});
    EXPECT_EQ(fake.userNotificationCenter.calls,
              (QStringList{QStringLiteral("add:k1"), QStringLiteral("removeDelivered:k1"),
                           QStringLiteral("removePending:k1"), QStringLiteral("add:k2")}));
}

TEST_F(Repeats, ThreeSecondsApartBothAreShown) {
    post(chat, ann, hi, QStringLiteral("k1"));
    fake.clock.time += 3;
    post(QStringLiteral("SMS"), number, hi, QStringLiteral("k2"));
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 2U);
}

TEST_F(Repeats, AClockThatIsSetBackMakesNoRepeat) {
    post(chat, ann, hi, QStringLiteral("k1"));
    fake.clock.time -= 3600;
    fake.clock.setBack += 3600 + 3;
    post(QStringLiteral("SMS"), number, hi, QStringLiteral("k2"));
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 2U);
}

TEST_F(Repeats, AnExactRepeatIsRemovedAndAddedAgainUnderItsIdentifier) {
    post(chat, ann, hi, QStringLiteral("k"));
    post(chat, ann, hi, QStringLiteral("k"));
    EXPECT_EQ(fake.userNotificationCenter.calls,
              (QStringList{QStringLiteral("add:k"), QStringLiteral("removeDelivered:k"),
                           QStringLiteral("removePending:k"), QStringLiteral("add:k")}));
}

TEST_F(Repeats, EqualBodiesCollapseAcrossApps) {
    post(chat, ann, QStringLiteral("Hi "));
    post(QStringLiteral("Mail"), QStringLiteral("Bob"), QStringLiteral("\tHi"));
    EXPECT_EQ(fake.userNotificationCenter.titles(), QStringList{QStringLiteral("Mail")});
}

TEST_F(Repeats, AnEmptyBodyIsABodyLikeAnyOther) {
    post(chat, ann, QString());
    post(QStringLiteral("Mail"), QStringLiteral("Bob"), QString());
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 1U);
}

TEST_F(Repeats, TheLatestIdentifierIsTheOneTakenAway) {
    post(chat, ann, hi, QStringLiteral("k1"));
    post(chat, ann, hi, QStringLiteral("k2"));
    post(chat, ann, hi, QStringLiteral("k3"));
    ASSERT_EQ(fake.userNotificationCenter.shown.size(), 1U);
    EXPECT_EQ(fake.userNotificationCenter.shown[0].identifier.text(), QStringLiteral("k3"));
}

TEST_F(PostSimple, HasSoundAndNeitherThreadNorCategory) {
    manager.postSimple(QStringLiteral("T"), QStringLiteral("B"));
    EXPECT_EQ(last().content.title, QStringLiteral("T"));
    EXPECT_EQ(last().content.body, QStringLiteral("B"));
    EXPECT_TRUE(last().content.hasDefaultSound);
    EXPECT_TRUE(last().content.subtitle.isEmpty());
    EXPECT_TRUE(last().content.threadIdentifier.isEmpty());
    EXPECT_TRUE(last().content.categoryIdentifier.isEmpty());
}

TEST_F(PostSimple, EachIsANotificationOfItsOwn) {
    manager.postSimple(QStringLiteral("T"), QStringLiteral("B"));
    manager.postSimple(QStringLiteral("T"), QStringLiteral("B"));
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 2U);
}

TEST_F(PostSimple, AnErrorIsNotLogged) {
    fake.userNotificationCenter.error = QStringLiteral("no server");
    manager.postSimple(QStringLiteral("T"), QStringLiteral("B"));
    EXPECT_THAT(fake.log.lines(), IsEmpty());
}

TEST_F(PostFileProgress, ARunningTransferIsSilent) {
    manager.postFileProgress(QStringLiteral("a.jpg"), 0, QStringLiteral("t1"));
    EXPECT_EQ(last().identifier.text(), QStringLiteral("t1"));
    EXPECT_EQ(last().content.title, QStringLiteral("Receiving File..."));
    EXPECT_EQ(last().content.body, QStringLiteral("a.jpg (0%)"));
    EXPECT_FALSE(last().content.hasDefaultSound);
}

TEST_F(PostFileProgress, AFinishedOneSoundsAndReplaces) {
    manager.postFileProgress(QStringLiteral("a.jpg"), 0, QStringLiteral("t1"));
    manager.postFileProgress(QStringLiteral("a.jpg"), 1, QStringLiteral("t1"));
    EXPECT_EQ(last().content.title, QStringLiteral("File Received"));
    EXPECT_EQ(last().content.body, QStringLiteral("a.jpg (100%)"));
    EXPECT_TRUE(last().content.hasDefaultSound);
    EXPECT_EQ(fake.userNotificationCenter.shown.size(), 1U);
}

TEST_F(PostFileProgress, TheFractionOfAPercentIsDropped) {
    manager.postFileProgress(QStringLiteral("100%1.txt"), 0.999, QStringLiteral("t"));
    EXPECT_EQ(last().content.body, QStringLiteral("100%1.txt (99%)"));
}

TEST(PostFileProgressDeathTest, WhatIsNoFractionIsFatal) {
    FakePlatform fake;
    NotificationManager manager(fake.userNotificationCenter, fake.clock, fake.log);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double progress : {std::nan(""), infinity, -infinity, 1e300}) {
        EXPECT_DEATH(manager.postFileProgress(QStringLiteral("a"), progress, QStringLiteral("t")),
                     "cannot be converted");
    }
}
