#include "platform/linux/scripts/BackgroundWork.h"

#include "SharedQueue.h"

#include <gmock/gmock.h>

#include <semaphore>
#include <thread>

using namespace brenvale;
using namespace std::chrono_literals;

namespace {

struct BackgroundWorkTest : testing::Test {
    void run(ScriptWork work) {
        runInBackground(queue, std::move(work), 1s, QStringLiteral("late"),
                        [this](const std::optional<QString>& error) {
                            answers.push_back(error.value_or(QStringLiteral("ok")));
                        });
    }

    SharedQueue queue;
    std::vector<QString> answers;
};

} // namespace

TEST_F(BackgroundWorkTest, RunsElsewhereAndAnswersHere) {
    std::thread::id worker;
    run([&worker]() -> std::optional<QString> {
        worker = std::this_thread::get_id();
        return {};
    });
    EXPECT_TRUE(answers.empty());
    queue.runOne();
    EXPECT_THAT(answers, testing::ElementsAre(QStringLiteral("ok")));
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(BackgroundWorkTest, TellsWhyTheWorkFailed) {
    run([]() -> std::optional<QString> { return QStringLiteral("broken"); });
    queue.runOne();
    EXPECT_THAT(answers, testing::ElementsAre(QStringLiteral("broken")));
}

TEST_F(BackgroundWorkTest, WorkThatIsLateFailsOnceAndItsEndIsNotHeard) {
    std::binary_semaphore mayEnd(0);
    run([&mayEnd]() -> std::optional<QString> {
        mayEnd.acquire();
        return {};
    });
    queue.passTime();
    EXPECT_THAT(answers, testing::ElementsAre(QStringLiteral("late")));
    mayEnd.release();
    queue.runOne();
    EXPECT_THAT(answers, testing::ElementsAre(QStringLiteral("late")));
}

TEST_F(BackgroundWorkTest, WorkThatEndedInTimeIsNotLate) {
    run([]() -> std::optional<QString> { return {}; });
    queue.runOne();
    queue.passTime();
    EXPECT_THAT(answers, testing::ElementsAre(QStringLiteral("ok")));
}
