#include "platform/linux/input/PostedEvents.h"

#include <gtest/gtest.h>

#include <poll.h>

using namespace brenvale;

namespace {

void addFromAnotherThread(PostedEvents& events, PostedEvent event) {
    std::jthread([&events, event = std::move(event)] { events.add(event); }).join();
}

bool isText(const std::optional<PostedEvent>& event, const QString& text) {
    const auto* key = event ? std::get_if<KeyEvent>(&*event) : nullptr;
    return key != nullptr && key->text == text;
}

bool isMove(const std::optional<PostedEvent>& event) {
    return event && std::holds_alternative<PointerMove>(*event);
}

KeyEvent textEvent(const QString& text) {
    return {.isDown = true, .text = text};
}

} // namespace

TEST(PostedEvents, WhatOneThreadPostsStaysInItsOrder) {
    PostedEvents events;
    events.add(textEvent(QStringLiteral("a")));
    events.add(PointerMove{});
    events.add(textEvent(QStringLiteral("b")));
    EXPECT_TRUE(isText(events.take(), QStringLiteral("a")));
    EXPECT_FALSE(events.takeBeside());
    EXPECT_TRUE(isMove(events.take()));
    EXPECT_TRUE(isText(events.take(), QStringLiteral("b")));
    EXPECT_FALSE(events.take());
}

TEST(PostedEvents, ThePointerOfAnotherThreadDoesNotWaitForAText) {
    PostedEvents events;
    events.add(textEvent(QStringLiteral("long")));
    events.add(textEvent(QStringLiteral("longer")));
    EXPECT_TRUE(isText(events.take(), QStringLiteral("long")));
    addFromAnotherThread(events, PointerMove{});
    EXPECT_TRUE(isMove(events.takeBeside()));
    EXPECT_TRUE(isText(events.take(), QStringLiteral("longer")));
}

TEST(PostedEvents, TextsThatFollowEachOtherGoTogether) {
    PostedEvents events;
    for (const auto* text : {"a", "b", "c"}) {
        events.add(textEvent(QString::fromLatin1(text)));
    }
    EXPECT_FALSE(events.takeTextBehind()) << "there is none in hand";
    EXPECT_TRUE(isText(events.take(), QStringLiteral("a")));
    EXPECT_EQ(events.takeTextBehind(), QStringLiteral("b"));
    EXPECT_EQ(events.takeTextBehind(), QStringLiteral("c"));
    EXPECT_FALSE(events.takeTextBehind());
}

TEST(PostedEvents, TextsWithSomethingInBetweenStayApart) {
    PostedEvents events;
    for (const PostedEvent& between :
         {PostedEvent(PointerButton{.isDown = true}), PostedEvent(KeyEvent{.keyCode = 123, .isDown = true}),
          PostedEvent(SystemDefinedEvent{})}) {
        events.add(textEvent(QStringLiteral("a")));
        events.add(between);
        events.add(textEvent(QStringLiteral("b")));
        EXPECT_TRUE(isText(events.take(), QStringLiteral("a")));
        EXPECT_FALSE(events.takeTextBehind());
        EXPECT_EQ(events.take()->index(), between.index());
        EXPECT_TRUE(isText(events.take(), QStringLiteral("b")));
    }
}

TEST(PostedEvents, TextsOfTwoThreadsStayApart) {
    PostedEvents events;
    events.add(textEvent(QStringLiteral("a")));
    addFromAnotherThread(events, textEvent(QStringLiteral("b")));
    EXPECT_TRUE(isText(events.take(), QStringLiteral("a")));
    EXPECT_FALSE(events.takeTextBehind());
}

TEST(PostedEvents, AClickBehindATextIsNotTakenApart) {
    PostedEvents events;
    events.add(textEvent(QStringLiteral("a")));
    events.add(PointerButton{.isDown = true});
    events.add(PointerButton{});
    EXPECT_TRUE(isText(events.take(), QStringLiteral("a")));
    EXPECT_FALSE(events.takeTextBehind());
    EXPECT_FALSE(events.takeBeside());
}

TEST(PostedEvents, APressThatWasTakenInIsReleasedHoweverFullItIs) {
    PostedEvents events;
    events.add(KeyEvent{.keyCode = 123, .isDown = true});
    for (int i = 0; i < 50'000; ++i) {
        events.add(SystemDefinedEvent{});
        events.add(KeyEvent{.keyCode = 124, .isDown = true});
    }
    events.add(KeyEvent{.keyCode = 123});
    std::optional<PostedEvent> last;
    int count = 0;
    while (auto event = events.take()) {
        last = std::move(event);
        ++count;
    }
    EXPECT_LE(count, 50'000) << "it is bounded";
    ASSERT_TRUE(last && std::holds_alternative<KeyEvent>(*last));
    EXPECT_EQ(std::get<KeyEvent>(*last).keyCode, 123);
    EXPECT_FALSE(std::get<KeyEvent>(*last).isDown);
}

TEST(PostedEvents, EachPressOfASystemKeyThatWasTakenInIsReleased) {
    PostedEvents events;
    const auto half = [](bool isDown) {
        return SystemDefinedEvent{.subtype = 8, .data1 = isDown ? 0x100a00 : 0x100b00};
    };
    events.add(KeyEvent{.keyCode = 124, .isDown = true}); // so that the lane fills up between two halves
    for (int i = 0; i < 50'000; ++i) {
        events.add(half(true));
        events.add(half(false));
    }
    int pressed = 0;
    int released = 0;
    while (const auto event = events.take()) {
        if (const auto* system = std::get_if<SystemDefinedEvent>(&*event)) {
            (*system == half(true) ? pressed : released)++;
        }
    }
    EXPECT_GT(pressed, 1'000);
    EXPECT_EQ(pressed, released);
    EXPECT_LE(pressed, 25'000) << "it is bounded";
}

TEST(PostedEvents, AReleaseWithoutAPressVanishes) {
    PostedEvents events;
    events.add(KeyEvent{.keyCode = 123});
    events.add(SystemDefinedEvent{.subtype = 8, .data1 = 0x100b00});
    EXPECT_FALSE(events.take());
}

TEST(PostedEvents, TextsAreBoundedTogether) {
    PostedEvents events;
    const auto text = textEvent(QString(600'000, u'x'));
    events.add(text);
    events.add(text);
    EXPECT_TRUE(events.take());
    EXPECT_FALSE(events.take());
    events.add(text);
    EXPECT_TRUE(events.take()) << "what was taken makes room";
}

TEST(PostedEvents, OnceClosedNothingIsTakenIn) {
    PostedEvents events;
    events.add(PointerMove{});
    events.close();
    events.add(PointerMove{});
    EXPECT_TRUE(events.isClosed());
    EXPECT_FALSE(events.take());
}

TEST(PostedEvents, SleepersAreWoken) {
    PostedEvents events;
    pollfd source{.fd = events.descriptor(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(::poll(&source, 1, 0), 0);
    events.add(PointerMove{});
    EXPECT_EQ(::poll(&source, 1, 0), 1);
    events.acknowledge();
    EXPECT_EQ(::poll(&source, 1, 0), 0);
}
