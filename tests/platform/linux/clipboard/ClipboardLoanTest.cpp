#include "platform/linux/clipboard/ClipboardLoan.h"

#include "FakeSelections.h"

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

struct ClipboardLoanTest : testing::Test {
    ClipboardLoanTest() {
        selections.copy(Selection::clipboard, copied);
        selections.copy(Selection::primary, selected);
    }

    void lend(const QString& text) {
        loan.lend(text, [this] { ++lent; });
    }

    [[nodiscard]] QByteArray shown(Selection selection) const {
        const auto* owned = selections.owned(selection);
        return owned != nullptr ? *owned->find("UTF8_STRING") : QByteArray("nothing");
    }

    ClipboardContents copied{.items = {{"UTF8_STRING", "copied"}, {"image/png", "picture"}}};
    ClipboardContents selected = ClipboardContents::ofText(QStringLiteral("selected"));
    FakeSelections selections;
    ClipboardLoan loan{selections};
    int lent = 0;
};

} // namespace

TEST_F(ClipboardLoanTest, TheTextIsOnBothSelectionsWhenItIsLent) {
    lend(QStringLiteral("typed"));
    EXPECT_EQ(lent, 1);
    EXPECT_EQ(shown(Selection::clipboard), "typed");
    EXPECT_EQ(shown(Selection::primary), "typed");
}

TEST_F(ClipboardLoanTest, NoHistoryIsToKeepIt) {
    lend(QStringLiteral("typed"));
    EXPECT_NE(selections.owned(Selection::clipboard)->find("x-kde-passwordManagerHint"), nullptr);
}

TEST_F(ClipboardLoanTest, ItEndsWithWhatTheUserHad) {
    lend(QStringLiteral("typed"));
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
    EXPECT_EQ(*selections.owned(Selection::primary), selected);
}

TEST_F(ClipboardLoanTest, WhereTheUserHadNothingItEndsWithNothing) {
    selections.copy(Selection::primary, {});
    lend(QStringLiteral("typed"));
    loan.giveBack();
    EXPECT_EQ(selections.owned(Selection::primary), nullptr);
}

TEST_F(ClipboardLoanTest, ANextTextTakesThePlaceOfTheFirstAndTheUsersIsKept) {
    lend(QStringLiteral("one"));
    lend(QStringLiteral("two"));
    EXPECT_EQ(lent, 2);
    EXPECT_EQ(shown(Selection::clipboard), "two");
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
}

TEST_F(ClipboardLoanTest, WhatAProgramPutThereMeanwhileStays) {
    lend(QStringLiteral("typed"));
    selections.copy(Selection::clipboard, ClipboardContents::ofText(QStringLiteral("newer")));
    loan.giveBack();
    EXPECT_EQ(selections.owned(Selection::clipboard), nullptr);
    EXPECT_EQ(*selections.owned(Selection::primary), selected);
}

TEST_F(ClipboardLoanTest, WhatThePhonePutsThereMeanwhileComesAtItsEnd) {
    const auto phones = ClipboardContents::ofText(QStringLiteral("from the phone"));
    EXPECT_FALSE(loan.holdBack(Selection::clipboard, phones));
    lend(QStringLiteral("typed"));
    EXPECT_TRUE(loan.holdBack(Selection::clipboard, phones));
    lend(QStringLiteral("typed again"));
    selections.copy(Selection::clipboard, ClipboardContents::ofText(QStringLiteral("older")));
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), phones);
    EXPECT_FALSE(loan.holdBack(Selection::clipboard, phones));
}

TEST_F(ClipboardLoanTest, WhatThePhonePutsThereBeforeItStandsComesAtItsEnd) {
    const auto phones = ClipboardContents::ofText(QStringLiteral("from the phone"));
    selections.isSlow = true;
    lend(QStringLiteral("typed"));
    EXPECT_TRUE(loan.holdBack(Selection::clipboard, phones));
    while (!selections.waiting.empty()) {
        selections.giveNext();
    }
    EXPECT_EQ(shown(Selection::clipboard), "typed");
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), phones);
}

TEST_F(ClipboardLoanTest, GivingBackTwiceIsGivingBackOnce) {
    loan.giveBack();
    lend(QStringLiteral("typed"));
    loan.giveBack();
    selections.copy(Selection::clipboard, {});
    loan.giveBack();
    EXPECT_EQ(selections.owned(Selection::clipboard), nullptr);
}

TEST_F(ClipboardLoanTest, ASecondLoanWhileTheFirstIsBeingKeptKeepsTheUsers) {
    selections.isSlow = true;
    lend(QStringLiteral("one"));
    lend(QStringLiteral("two"));
    while (!selections.waiting.empty()) {
        selections.giveNext();
    }
    EXPECT_EQ(lent, 2);
    EXPECT_EQ(shown(Selection::clipboard), "two");
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
}

TEST_F(ClipboardLoanTest, ALoanAfterOneThatWasGivenBackBeforeItStoodStands) {
    selections.isSlow = true;
    lend(QStringLiteral("one"));
    loan.giveBack();
    lend(QStringLiteral("two"));
    while (!selections.waiting.empty()) {
        selections.giveNext();
    }
    EXPECT_EQ(shown(Selection::clipboard), "two");
    loan.giveBack();
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
}

TEST_F(ClipboardLoanTest, AtTheEndTheUsersIsBackAndNothingIsLentAnyMore) {
    lend(QStringLiteral("typed"));
    loan.end();
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
    EXPECT_EQ(*selections.owned(Selection::primary), selected);
    lend(QStringLiteral("typed late"));
    EXPECT_EQ(lent, 1);
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
    EXPECT_TRUE(loan.hasEnded());
}

TEST_F(ClipboardLoanTest, AtTheEndALoanThatDoesNotStandYetNeverDoes) {
    const auto phones = ClipboardContents::ofText(QStringLiteral("from the phone"));
    selections.isSlow = true;
    lend(QStringLiteral("typed"));
    EXPECT_TRUE(loan.holdBack(Selection::clipboard, phones));
    loan.end();
    while (!selections.waiting.empty()) {
        selections.giveNext();
    }
    EXPECT_EQ(lent, 0);
    EXPECT_EQ(*selections.owned(Selection::clipboard), phones);
    EXPECT_EQ(selections.owned(Selection::primary), nullptr) << "as it was";
}

TEST_F(ClipboardLoanTest, ALoanGivenBackBeforeItStoodLeavesTheUsers) {
    selections.isSlow = true;
    lend(QStringLiteral("one"));
    loan.giveBack();
    while (!selections.waiting.empty()) {
        selections.giveNext();
    }
    EXPECT_EQ(lent, 1);
    EXPECT_EQ(*selections.owned(Selection::clipboard), copied);
}
