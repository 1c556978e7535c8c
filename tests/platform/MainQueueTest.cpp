#include "platform/MainQueue.h"

#include "fakes/EventLoop.h"

#include <QElapsedTimer>
#include <QEventLoop>

#include <gmock/gmock.h>

#include <thread>

using namespace brenvale;
using namespace std::chrono_literals;

namespace {

struct Main : testing::Test, EventLoop {
    MainQueue queue;
};

} // namespace

using MainQueueTest = Main;

TEST_F(MainQueueTest, StepsRunInOrderAndNotBeforeTheLoop) {
    std::vector<int> order;
    queue.async([&] {
        order.push_back(1);
        queue.async([&] { order.push_back(3); });
    });
    queue.async([&] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

TEST_F(MainQueueTest, StepsOfAnotherThreadRunHereInTheirOrder) {
    constexpr int count = 100'000;
    const auto mainThread = std::this_thread::get_id();
    QEventLoop loop;
    int expected = 0;
    int misplaced = 0;
    const std::jthread other([&] {
        for (int i = 0; i < count; ++i) {
            queue.async([&, i] {
                misplaced += i != expected || std::this_thread::get_id() != mainThread ? 1 : 0;
                if (++expected == count) {
                    loop.quit();
                }
            });
        }
    });
    loop.exec();
    EXPECT_EQ(expected, count);
    EXPECT_EQ(misplaced, 0);
}

TEST_F(MainQueueTest, ADelayedStepRunsLaterAndAfterItsDelay) {
    QEventLoop loop;
    QElapsedTimer timer;
    timer.start();
    const std::jthread other([&] { queue.asyncAfter(30ms, [&] { loop.quit(); }); });
    loop.exec();
    EXPECT_GE(timer.nsecsElapsed(), 30'000'000);
}

TEST_F(MainQueueTest, NoDelayedStepRunsTooSoon) {
    QEventLoop loop;
    QElapsedTimer timer;
    timer.start();
    int waiting = 0;
    for (auto delay = 200ms; delay < 400ms;
         delay += 7ms) { // those that are rounded the other way do not show it
        ++waiting;
        queue.asyncAfter(delay, [&, delay] {
            EXPECT_GE(std::chrono::nanoseconds(timer.nsecsElapsed()), delay);
            if (--waiting == 0) {
                loop.quit();
            }
        });
    }
    loop.exec();
}
