#include "platform/linux/input/WaylandEventPoster.h"

#include "EventPosterContract.h"
#include "InputCompositor.h"

#include <thread>

namespace brenvale {

namespace {

class WaylandTrial final : public PosterTrial {
public:
    [[nodiscard]] EventPoster& poster() override { return poster_; }
    [[nodiscard]] QStringList seenUntil(const QString& end) override {
        return compositor_.seen().seenUntil(end);
    }
    [[nodiscard]] bool stall() override {
        compositor_.stall();
        return true;
    }
    void resume() override { compositor_.resume(); }

private:
    InputCompositor compositor_;
    WaylandEventPoster poster_;
};

void waitUntilImpossible(const EventPoster& poster) {
    while (poster.canMakeEvents()) {
        std::this_thread::yield();
    }
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Wayland, EventPosterContract,
                         testing::Values(MakePosterTrial{"Wayland", [] {
                                                             return std::make_unique<WaylandTrial>();
                                                         }}));

TEST(WaylandEventPoster, MakesNoEventsWithoutACompositor) {
    const TestVariable display("WAYLAND_DISPLAY", "wayland-4711");
    const WaylandEventPoster poster;
    waitUntilImpossible(poster);
}

TEST(WaylandEventPoster, HoldsNoModifierBehindAKey) {
    InputCompositor compositor;
    WaylandEventPoster poster;
    const auto seenBehind = [&](const KeyEvent& key) {
        using enum MouseEvent::Type;
        poster.post(key);
        poster.post(MouseEvent{.type = key.isDown ? leftDown : leftUp});
        return compositor.seen().seenUntil(key.isDown ? QStringLiteral("press left")
                                                      : QStringLiteral("release left"));
    };
    constexpr quint64 shiftFlag = 0x20000;
    EXPECT_THAT(seenBehind({.keyCode = 123, .flags = shiftFlag, .isDown = true}),
                testing::ElementsAre("down Left shift", "press left"));
    EXPECT_NE(compositor.held(), 0U);
    EXPECT_THAT(seenBehind({.keyCode = 123, .flags = shiftFlag}), testing::Contains("up Left shift"));
    EXPECT_EQ(compositor.held(), 0U);
}

TEST(WaylandEventPoster, ACompositorThatGoesIsTheEnd) {
    auto compositor = std::make_unique<InputCompositor>();
    WaylandEventPoster poster;
    poster.post(KeyEvent{.keyCode = 123, .isDown = true});
    poster.post(KeyEvent{.keyCode = 123, .isDown = false});
    EXPECT_THAT(compositor->seen().seenUntil(QStringLiteral("up Left")),
                testing::ElementsAre("down Left", "up Left"));
    compositor.reset();
    waitUntilImpossible(poster);
    poster.post(KeyEvent{.keyCode = 123, .isDown = true});
}

TEST(WaylandEventPoster, ACompositorThatNeverAnswersHoldsUpNoEnd) {
    InputCompositor compositor;
    compositor.stall();
    {
        WaylandEventPoster poster;
        poster.post(KeyEvent{.isDown = true, .text = QStringLiteral("text")});
    }
    compositor.resume();
}

} // namespace brenvale
