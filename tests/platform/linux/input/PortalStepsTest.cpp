#include "platform/linux/input/PortalSteps.h"

#include "platform/linux/input/KeyTable.h"

#include <gmock/gmock.h>

#include <limits>

using namespace brenvale;
using testing::ElementsAre;

namespace {

PortalStep keycode(int code, bool isDown) {
    return PortalNotify{.method = QStringLiteral("NotifyKeyboardKeycode"),
                        .values = {code, isDown ? 1U : 0U}};
}

PortalStep keysym(int keysym, bool isDown) {
    return PortalNotify{.method = QStringLiteral("NotifyKeyboardKeysym"),
                        .values = {keysym, isDown ? 1U : 0U}};
}

PortalStep motion(double dx, double dy) {
    return PortalNotify{.method = QStringLiteral("NotifyPointerMotion"), .values = {dx, dy}};
}

PortalSteps stepsOfText(const QString& text, std::u32string_view layout) {
    std::set<quint32> keysyms;
    for (const auto character : layout) {
        keysyms.insert(keysymOf(character));
    }
    return portalStepsFor(KeyEvent{.isDown = true, .text = text}, keysyms);
}

constexpr quint64 commandAndShift = 0x120000;

} // namespace

TEST(PortalSteps, HoldTheModifiersOnTheOneKey) {
    EXPECT_THAT(portalStepsFor(KeyEvent{.keyCode = 123, .flags = commandAndShift, .isDown = true}, {}),
                ElementsAre(keycode(42, true), keycode(125, true), keycode(105, true)));
    EXPECT_THAT(portalStepsFor(KeyEvent{.keyCode = 123, .flags = commandAndShift, .isDown = false}, {}),
                ElementsAre(keycode(105, false), keycode(125, false), keycode(42, false)));
}

TEST(PortalSteps, PressAModifierKeyAlone) {
    EXPECT_THAT(portalStepsFor(KeyEvent{.keyCode = 59, .isDown = true}, {}), ElementsAre(keycode(29, true)));
}

TEST(PortalSteps, AreNoneForUnknownKeys) {
    EXPECT_TRUE(portalStepsFor(KeyEvent{.keyCode = 0, .isDown = true}, {}).empty());
    EXPECT_TRUE(portalStepsFor(SystemDefinedEvent{.subtype = 7, .data1 = 0x100a00}, {}).empty());
}

TEST(PortalSteps, TypeATextOfTheLayoutByItsCharacters) {
    EXPECT_THAT(stepsOfText(QStringLiteral("a€я"), U"a€я"),
                ElementsAre(keysym(0x61, true), keysym(0x61, false), keysym(0x20ac, true),
                            keysym(0x20ac, false), keysym(0x6d1, true), keysym(0x6d1, false)));
}

TEST(PortalSteps, PasteATextThatTheLayoutLacksInPart) {
    EXPECT_THAT(stepsOfText(QStringLiteral("aä"), U"a"), ElementsAre(PortalPaste{QStringLiteral("aä")}));
    EXPECT_THAT(stepsOfText(QStringLiteral("a\r\n\t😀"), U"a"),
                ElementsAre(PortalPaste{QStringLiteral("a\n\t😀")}));
}

TEST(PortalSteps, PasteEverythingWhileNoLayoutIsKnown) {
    EXPECT_THAT(stepsOfText(QStringLiteral("abc"), U""), ElementsAre(PortalPaste{QStringLiteral("abc")}));
}

TEST(PortalSteps, LineEndsAndTabsAreKeysOfEveryLayout) {
    EXPECT_THAT(stepsOfText(QStringLiteral("\n\t"), U""),
                ElementsAre(keycode(28, true), keycode(28, false), keycode(15, true), keycode(15, false)));
}

TEST(PortalSteps, AreNoneForAnEmptyText) {
    EXPECT_TRUE(stepsOfText(QString(), U"").empty());
}

TEST(PortalSteps, PasteByPlacesOnTheKeyboard) {
    const auto steps = pastingSteps();
    ASSERT_EQ(steps.size(), 5);
    EXPECT_THAT(PortalSteps(steps.begin(), steps.begin() + 4),
                ElementsAre(keycode(42, true), keycode(110, true), keycode(110, false), keycode(42, false)));
    EXPECT_TRUE(std::holds_alternative<PortalPause>(steps.back())) << "the text has to stay for a moment";
}

TEST(PortalSteps, MoveThePointerByFractionsAndByNoMoreThanAnyScreenHas) {
    constexpr auto infinite = std::numeric_limits<double>::infinity();
    EXPECT_THAT(portalStepsFor(PointerMove{.by = {10.4, -0.25}}, {}), ElementsAre(motion(10.4, -0.25)));
    EXPECT_THAT(portalStepsFor(PointerMove{.by = {infinite, -1e300}}, {}), ElementsAre(motion(1e6, -1e6)));
    EXPECT_THAT(portalStepsFor(PointerMove{.by = {std::nan(""), 1}}, {}), ElementsAre(motion(0, 1)));
}
