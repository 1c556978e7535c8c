#include "platform/linux/input/EventPostingTrust.h"

#include "fakes/FakeConsent.h"
#include "fakes/RecordingEventPoster.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using enum AccessibilityTrust::State;
using Occasion = InputConsent::Occasion;

struct PostingTrust : testing::Test {
    PostingTrust() { poster.makesEvents = false; }

    RecordingEventPoster poster;
    FakeConsent consent;
    EventPostingTrust trust{poster, &consent};
    EventPostingTrust trustWithoutDialog{poster, nullptr};
};

} // namespace

TEST_F(PostingTrust, WhoeverMakesEventsIsTrusted) {
    poster.makesEvents = true;
    for (const bool hasDialog : {true, false}) {
        consent.hasDialog = hasDialog;
        EXPECT_EQ(trust.state(), trusted);
    }
    EXPECT_EQ(trustWithoutDialog.state(), trusted);
    EXPECT_TRUE(trustWithoutDialog.isProcessTrusted(true));
}

TEST_F(PostingTrust, WhereNobodyMakesEventsTheUserIsToBeAskedIfThereIsADialog) {
    EXPECT_EQ(trust.state(), toBeAsked);
    consent.hasDialog = false;
    EXPECT_EQ(trust.state(), impossible);
    EXPECT_EQ(trustWithoutDialog.state(), impossible);
    EXPECT_FALSE(trustWithoutDialog.isProcessTrusted(true));
}

TEST_F(PostingTrust, TheAnswerIsThatOfTheMoment) {
    EXPECT_FALSE(trust.isProcessTrusted(false));
    poster.makesEvents = true;
    EXPECT_TRUE(trust.isProcessTrusted(false));
    poster.makesEvents = false;
    EXPECT_FALSE(trust.isProcessTrusted(false));
    EXPECT_EQ(trust.state(), toBeAsked);
}

TEST_F(PostingTrust, AQuestionWithoutAPromptAsksNobody) {
    (void)trust.isProcessTrusted(false);
    EXPECT_THAT(consent.asked, IsEmpty());
}

TEST_F(PostingTrust, APromptAsksAsAStartDoesUnlessEventsCanBeMade) {
    EXPECT_FALSE(trust.isProcessTrusted(true)) << "the answer shows later";
    EXPECT_THAT(consent.asked, ElementsAre(Occasion::start));
    poster.makesEvents = true;
    EXPECT_TRUE(trust.isProcessTrusted(true));
    EXPECT_THAT(consent.asked, ElementsAre(Occasion::start));
}

TEST_F(PostingTrust, APromptWaitsForADialogThatIsStillComing) {
    consent.hasDialog = false;
    (void)trust.isProcessTrusted(true);
    EXPECT_THAT(consent.asked, ElementsAre(Occasion::start));
}

TEST_F(PostingTrust, TheUserIsAskedAtWillOnlyWhereThatHelps) {
    trust.askUser();
    EXPECT_THAT(consent.asked, ElementsAre(Occasion::usersWish));
    consent.hasDialog = false;
    trust.askUser();
    consent.hasDialog = true;
    poster.makesEvents = true;
    trust.askUser();
    trustWithoutDialog.askUser();
    EXPECT_THAT(consent.asked, ElementsAre(Occasion::usersWish));
}

TEST_F(PostingTrust, WhoObservesSeesTheStateAtOnceAndAtEachChangeOfTheConsent) {
    std::vector<AccessibilityTrust::State> seen;
    auto subscription = trust.observe([&] { seen.push_back(trust.state()); });
    EXPECT_THAT(seen, ElementsAre(toBeAsked));
    poster.makesEvents = true;
    consent.tellOfAChange();
    poster.makesEvents = false;
    consent.hasDialog = false;
    consent.tellOfAChange();
    EXPECT_THAT(seen, ElementsAre(toBeAsked, trusted, impossible));
    subscription.reset();
    consent.tellOfAChange();
    EXPECT_EQ(seen.size(), 3U) << "nobody observes any more";
}

TEST_F(PostingTrust, WithoutADialogWhoObservesSeesTheStateOnce) {
    int times = 0;
    const auto subscription = trustWithoutDialog.observe([&times] { ++times; });
    EXPECT_EQ(times, 1);
}
