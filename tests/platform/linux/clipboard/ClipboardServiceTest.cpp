#include "platform/linux/clipboard/ClipboardService.h"

#include "fakes/EventLoop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

using namespace brenvale;

namespace {

/// A session without any display: every request goes to the thread and comes back refused.
struct ClipboardServiceTest : testing::Test, EventLoop {
    MainQueue main;
    ClipboardService service{main, ClipboardService::Session::none};
};

} // namespace

TEST_F(ClipboardServiceTest, WithoutAWayWhoOwnsIsToldSo) {
    bool isRefused = false;
    service.own(Selection::clipboard, ClipboardContents::ofText(QStringLiteral("text")),
                [&isRefused] { isRefused = true; });
    turnUntil([&isRefused] { return isRefused; });
}

TEST_F(ClipboardServiceTest, WithoutAWayTheAnswerIsHandedBack) {
    bool isAnswered = false;
    service.readText(
        Selection::clipboard, [&isAnswered](const std::optional<QString>&) { isAnswered = true; },
        [](ClipboardService::Text answer) { answer(std::nullopt); });
    turnUntil([&isAnswered] { return isAnswered; });
}

TEST_F(ClipboardServiceTest, WithoutAWayNothingIsLent) {
    std::optional<bool> isLent;
    service.lend(QStringLiteral("typed"), [&isLent](bool answer) { isLent = answer; });
    turnUntil([&isLent] { return isLent.has_value(); });
    EXPECT_EQ(isLent, false);
    service.giveBack();
}

TEST_F(ClipboardServiceTest, AnswersComeInTheOrderOfTheirQuestions) {
    std::vector<int> answers;
    for (int number = 0; number < 100; ++number) {
        service.lend(QString(), [&answers, number](bool) { answers.push_back(number); });
    }
    turnUntil([&answers] { return answers.size() == 100; });
    EXPECT_TRUE(std::ranges::is_sorted(answers));
}

TEST_F(ClipboardServiceTest, TheEndWaitsForNothingWhereNothingIsKept) {
    service.saveBeforeEnd();
}
