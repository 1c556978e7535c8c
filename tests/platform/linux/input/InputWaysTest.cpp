#include "platform/linux/input/InputWays.h"

#include "platform/MainQueue.h"
#include "platform/linux/input/InputConsent.h"
#include "platform/linux/input/UinputEventPoster.h"

#include "fakes/EventLoop.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace brenvale;

namespace {

/// No display and no bus answers here: which ways there are is the session's matter alone.
struct InputWaysTest : testing::Test, EventLoop {
    InputWaysTest() {
        qputenv("DISPLAY", ":4711");
        qputenv("WAYLAND_DISPLAY", "/nowhere");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    }

    InputWays waysOf(Display::Kind kind, bool takesEvents) {
        return inputWays(Display{.kind = kind, .takesEvents = takesEvents, .userChoice = {}}, main, nullptr);
    }

    static bool hasKernels(const InputWays& input) {
        return std::ranges::any_of(input.ways, [](const auto& way) {
            return dynamic_cast<const UinputEventPoster*>(way.get()) != nullptr;
        });
    }

    MainQueue main;
};

} // namespace

TEST_F(InputWaysTest, WhereTheUserIsAskedTheKernelsDeviceComesAfterThePortal) {
    const auto input = waysOf(Display::Kind::wayland, false);
    EXPECT_NE(input.consent, nullptr);
    ASSERT_EQ(input.ways.size(), 2U);
    EXPECT_EQ(dynamic_cast<const InputConsent*>(input.ways.front().get()), input.consent);
    EXPECT_TRUE(hasKernels(input));
}

TEST_F(InputWaysTest, ADisplayThatTakesEventsIsTheOnlyWay) {
    for (const auto kind : {Display::Kind::x11, Display::Kind::wayland}) {
        const auto input = waysOf(kind, true);
        EXPECT_EQ(input.consent, nullptr);
        EXPECT_EQ(input.ways.size(), 1U);
        EXPECT_FALSE(hasKernels(input));
    }
}

TEST_F(InputWaysTest, TheKernelsDeviceIsTheLastResort) {
    for (const auto kind : {Display::Kind::none, Display::Kind::x11}) {
        const auto input = waysOf(kind, false);
        EXPECT_EQ(input.ways.size(), 1U);
        EXPECT_TRUE(hasKernels(input));
    }
}
