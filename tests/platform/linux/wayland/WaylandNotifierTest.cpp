#include "platform/linux/wayland/WaylandNotifier.h"

#include "TestCompositor.h"

#include "fakes/EventLoop.h"

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

/// Turns both loops until the condition holds.
template <typename Condition>
void turn(TestCompositor& compositor, Condition condition) {
    while (!condition()) {
        compositor.step();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
}

} // namespace

TEST(WaylandNotifier, TellsWhenTheServicesAreKnownAndWhenTheConnectionEnds) {
    const EventLoop loop;
    TestCompositor compositor;
    compositor.offer(wl_seat_interface, 1);
    WaylandNotifier notifier(WaylandConnection::open());
    bool isReady = false;
    bool hasEnded = false;
    notifier.ready = [&isReady] {
        isReady = true;
    };
    notifier.ended = [&hasEnded] {
        hasEnded = true;
    };
    turn(compositor, [&isReady] { return isReady; });
    EXPECT_NE(notifier.connection().find(wl_seat_interface), nullptr);
    EXPECT_FALSE(hasEnded);
    compositor.dropClients();
    turn(compositor, [&hasEnded] { return hasEnded; });
    EXPECT_FALSE(notifier.connection().isAlive());
}

TEST(WaylandNotifier, WhatIsRequestedLaterIsSentByFlush) {
    const EventLoop loop;
    TestCompositor compositor;
    WaylandNotifier notifier(WaylandConnection::open());
    bool isReady = false;
    notifier.ready = [&isReady] {
        isReady = true;
    };
    turn(compositor, [&isReady] { return isReady; });
    bool isAnswered = false;
    notifier.connection().sync([&isAnswered] { isAnswered = true; });
    notifier.flush();
    turn(compositor, [&isAnswered] { return isAnswered; });
}
