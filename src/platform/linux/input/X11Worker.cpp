#include "platform/linux/input/X11Worker.h"

#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <array>

#include <poll.h>

namespace brenvale {

namespace {

using std::chrono::milliseconds;

// A release follows its press at once. Both are sent together, so that no end of this process comes between.
constexpr milliseconds releaseComes{2};

} // namespace

X11Worker::X11Worker(PostedEvents& events, X11Display& display)
    : events_(events),
      display_(display),
      layout_(display),
      spareKeys_(display, layout_),
      keyboard_(display, layout_, spareKeys_,
                [this](const auto& isDone, milliseconds limit) { return wait(isDone, limit); }),
      typing_(display, layout_, spareKeys_,
              [this](const auto& isDone, milliseconds limit) { return wait(isDone, limit); }) {}

void X11Worker::run() {
    // The server may not have noticed yet that one is gone which was killed a moment ago.
    constexpr milliseconds noticing{200};
    if (spareKeys_.isInOtherHands()) {
        wait([] { return false; }, noticing);
    }
    spareKeys_.mend();
    while (goesOn()) {
        events_.acknowledge();
        const bool wasHolding = keyboard_.isHolding();
        while (const auto event = events_.take()) {
            perform(*event);
        }
        if (keyboard_.isHolding() && !wasHolding) {
            pollfd more{.fd = events_.descriptor(), .events = POLLIN, .revents = 0};
            ::poll(&more, 1, releaseComes.count());
            continue;
        }
        display_.flush();
        display_.readEvents();
        const auto due = typing_.due();
        if (due && *due <= Clock::now()) {
            constexpr milliseconds hanging{5000};
            typing_.takeBack(hanging);
            continue;
        }
        sleep(due);
    }
    finish();
}

/// What is down comes up, and what is lent goes back.
void X11Worker::finish() {
    constexpr milliseconds hurry{300};
    isFinishing_ = true;
    keyboard_.releaseAll();
    if (spareKeys_.hasLent()) {
        typing_.takeBack(hurry);
    }
    display_.flush();
    (void)display_.keyboardState(); // the server has taken it in
}

void X11Worker::sleep(std::optional<Clock::time_point> end) {
    std::array<pollfd, 2> sources{pollfd{.fd = events_.descriptor(), .events = POLLIN, .revents = 0},
                                  pollfd{.fd = display_.descriptor(), .events = POLLIN, .revents = 0}};
    int timeout = -1;
    if (end) {
        const auto left = std::chrono::ceil<milliseconds>(*end - Clock::now()).count();
        timeout = static_cast<int>(std::clamp<milliseconds::rep>(left, 0, 60'000));
    }
    ::poll(sources.data(), sources.size(), timeout);
}

bool X11Worker::wait(const std::function<bool()>& isDone, milliseconds limit) {
    const auto end = Clock::now() + limit;
    for (;;) {
        performBeside();
        display_.flush();
        display_.readEvents();
        if (!goesOn()) {
            return false;
        }
        if (isDone()) {
            return true;
        }
        if (Clock::now() >= end) {
            return false;
        }
        events_.acknowledge();
        sleep(end);
    }
}

void X11Worker::performBeside() {
    while (const auto event = events_.takeBeside()) {
        perform(*event);
    }
}

void X11Worker::perform(const PostedEvent& event) {
    std::visit([this](const auto& one) { perform(one); }, event);
}

void X11Worker::perform(const KeyEvent& event) {
    if (event.text) {
        typing_.type(typedCharacters(*event.text));
    } else {
        keyboard_.post(event);
        typing_.noteUse();
    }
}

void X11Worker::perform(const SystemDefinedEvent& event) {
    keyboard_.post(event);
    typing_.noteUse();
}

void X11Worker::perform(const PointerMove& event) {
    const auto step = steps_.step(event.by);
    if (!step.isNull()) {
        display_.sendMove(step);
    }
}

void X11Worker::perform(const PointerButton& event) {
    constexpr quint8 primary = 1;
    constexpr quint8 secondary = 3;
    display_.sendButton(event.isRight ? secondary : primary, event.isDown);
}

} // namespace brenvale
