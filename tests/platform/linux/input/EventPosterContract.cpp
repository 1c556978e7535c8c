#include "EventPosterContract.h"

#include <array>
#include <thread>

namespace brenvale {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr quint16 deleteKey = 51;
constexpr quint16 escapeKey = 53;
constexpr quint16 commandKey = 55;
constexpr quint16 optionKey = 58;
constexpr quint16 controlKey = 59;
constexpr quint16 leftKey = 123;
constexpr quint16 rightKey = 124;
constexpr quint16 downKey = 125;
constexpr quint16 upKey = 126;
constexpr quint64 shiftFlag = 0x20000;
constexpr quint64 controlFlag = 0x40000;
constexpr quint64 optionFlag = 0x80000;
constexpr quint64 commandFlag = 0x100000;

bool isOfModifierKey(const QString& line) {
    static const QStringList keys{QStringLiteral("Control"), QStringLiteral("Option"),
                                  QStringLiteral("Command"), QStringLiteral("Shift")};
    return keys.contains(line.section(u' ', 1));
}

/// Without the modifier keys that a back end presses around a key.
QStringList withoutModifierKeys(QStringList lines) {
    lines.removeIf(isOfModifierKey);
    return lines;
}

QStringList linesOf(const QStringList& lines, const QString& word) {
    return lines.filter(word);
}

/// How far the pointer went in all.
QPointF movementIn(const QStringList& lines) {
    QPointF sum;
    for (const auto& line : lines) {
        if (line.startsWith(QStringLiteral("by "))) {
            sum += QPointF(line.section(u' ', 1, 1).toDouble(), line.section(u' ', 2, 2).toDouble());
        }
    }
    return sum;
}

QStringList repeated(const QStringList& lines, int count) {
    QStringList all;
    for (int i = 0; i < count; ++i) {
        all += lines;
    }
    return all;
}

} // namespace

void EventPosterContract::press(quint16 keyCode, quint64 flags) {
    poster().post(KeyEvent{.keyCode = keyCode, .flags = flags, .isDown = true});
    poster().post(KeyEvent{.keyCode = keyCode, .flags = flags, .isDown = false});
}

void EventPosterContract::pressSystemKey(qint32 key) {
    for (const quint64 flags : {0xa00U, 0xb00U}) {
        poster().post(SystemDefinedEvent{.flags = flags,
                                         .subtype = 8,
                                         .data1 = (qint64{key} << 16) | static_cast<qint64>(flags),
                                         .data2 = -1});
    }
}

void EventPosterContract::type(const QString& text) {
    poster().post(KeyEvent{.isDown = true, .text = text});
    poster().post(KeyEvent{});
}

void EventPosterContract::moveBy(double dx, double dy) {
    poster().post(MouseEvent{.type = MouseEvent::Type::moved,
                             .position = poster().pointerLocation() + QPointF(dx, dy)});
}

void EventPosterContract::click(bool isRight) {
    using enum MouseEvent::Type;
    const auto position = poster().pointerLocation();
    const auto button = static_cast<quint8>(isRight ? 1 : 0);
    poster().post(MouseEvent{.type = isRight ? rightDown : leftDown, .position = position, .button = button});
    poster().post(MouseEvent{.type = isRight ? rightUp : leftUp, .position = position, .button = button});
}

QStringList EventPosterContract::seen() {
    press(escapeKey);
    const auto end = QStringLiteral("up Escape");
    auto lines = trial().seenUntil(end);
    EXPECT_EQ(lines.size() < 2 ? QStringList() : lines.sliced(lines.size() - 2),
              (QStringList{QStringLiteral("down Escape"), end}))
        << "the last keys were pressed, and nothing is held on them";
    return lines.size() < 2 ? lines : lines.sliced(0, lines.size() - 2);
}

TEST_P(EventPosterContract, MakesEvents) {
    EXPECT_TRUE(poster().canMakeEvents());
}

TEST_P(EventPosterContract, PressesEachKeyDownBeforeUp) {
    for (const auto key : {deleteKey, leftKey, rightKey, downKey, upKey}) {
        press(key);
    }
    EXPECT_THAT(seen(), ElementsAre("down Delete", "up Delete", "down Left", "up Left", "down Right",
                                    "up Right", "down Down", "up Down", "down Up", "up Up"));
}

TEST_P(EventPosterContract, HoldsTheModifiersOnTheOneKey) {
    press(leftKey, commandFlag | shiftFlag);
    press(rightKey, controlFlag | optionFlag);
    press(upKey);
    const auto lines = seen();
    EXPECT_THAT(withoutModifierKeys(lines),
                ElementsAre("down Left cmd+shift", "up Left cmd+shift", "down Right ctrl+option",
                            "up Right ctrl+option", "down Up", "up Up"));
    for (const auto* name : {"Control", "Option", "Command", "Shift"}) {
        EXPECT_EQ(lines.count(QStringLiteral("down ") + QLatin1String(name)),
                  lines.count(QStringLiteral("up ") + QLatin1String(name)))
            << name << " is not left pressed";
    }
}

TEST_P(EventPosterContract, HoldsNoModifierOnWhatIsTypedNext) {
    press(leftKey, commandFlag | controlFlag | optionFlag | shiftFlag);
    type(QStringLiteral("ab"));
    EXPECT_THAT(withoutModifierKeys(seen()),
                ElementsAre("down Left cmd+ctrl+option+shift", "up Left cmd+ctrl+option+shift", "text ab"));
}

TEST_P(EventPosterContract, PressesAModifierKeyAlone) {
    for (const auto key : {controlKey, optionKey, commandKey}) {
        press(key);
    }
    EXPECT_THAT(seen(), ElementsAre("down Control", "up Control", "down Option", "up Option", "down Command",
                                    "up Command"));
}

TEST_P(EventPosterContract, LetsUnknownKeysVanish) {
    press(leftKey);
    press(0);
    press(127);
    press(0xffff, shiftFlag);
    pressSystemKey(99);
    poster().post(SystemDefinedEvent{.flags = 0xa00, .subtype = 7, .data1 = 0x100a00, .data2 = -1});
    press(rightKey);
    EXPECT_THAT(withoutModifierKeys(seen()), ElementsAre("down Left", "up Left", "down Right", "up Right"));
}

TEST_P(EventPosterContract, PressesSystemKeys) {
    const QList<int> keys{0, 1, 2, 3, 7, 16, 17, 18, 21, 22};
    QStringList expected;
    for (const auto key : keys) {
        pressSystemKey(key);
        expected << QStringLiteral("down system%1").arg(key) << QStringLiteral("up system%1").arg(key);
    }
    EXPECT_EQ(withoutModifierKeys(seen()), expected);
}

TEST_P(EventPosterContract, TypesAllThatAKeyboardHas) {
    QString text;
    for (char16_t character = u' '; character <= u'~'; ++character) {
        text += character;
    }
    type(text);
    EXPECT_EQ(withoutModifierKeys(seen()), QStringList{QStringLiteral("text ") + text});
}

TEST_P(EventPosterContract, TypesAnyTextWholeAndInOrder) {
    if (!trial().typesAnyText()) {
        GTEST_SKIP() << "by design this way types only what the layout of the keyboard has";
    }
    const auto text = QStringLiteral(
        "Hello, Wörld! 3 < 4 Ελλάδα привет مرحبا שלום 漢字 👩‍👩‍👧 "
        "e\u0301 "
        "ﬁ €");
    type(text);
    EXPECT_EQ(withoutModifierKeys(seen()), QStringList{QStringLiteral("text ") + text});
}

TEST_P(EventPosterContract, TypesALongText) {
    const auto piece = trial().typesAnyText() ? QStringLiteral("%1aÄ漢") : QStringLiteral("%1aA~");
    QString text;
    for (int i = 0; i < 100; ++i) {
        text += piece.arg(i);
    }
    type(text);
    EXPECT_EQ(withoutModifierKeys(seen()), QStringList{QStringLiteral("text ") + text});
}

TEST_P(EventPosterContract, TypesNothingForAnEmptyText) {
    type({});
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_P(EventPosterContract, KeepsTheOrderOfTextKeysAndPointer) {
    const auto text = trial().typesAnyText() ? QStringLiteral("aß") : QStringLiteral("aS");
    type(text);
    press(leftKey);
    moveBy(5, 7);
    click();
    type(QStringLiteral("z"));
    click(true);
    press(upKey, shiftFlag);
    EXPECT_THAT(withoutModifierKeys(seen()),
                ElementsAre(QStringLiteral("text ") + text, "down Left", "up Left", "by 5 7", "press left",
                            "release left", "text z", "press right", "release right", "down Up shift",
                            "up Up shift"));
}

TEST_P(EventPosterContract, MovesRelatively) {
    moveBy(10, -20);
    moveBy(-3, 0);
    moveBy(0, 25);
    EXPECT_EQ(movementIn(seen()), QPointF(7, 5));
}

TEST_P(EventPosterContract, CarriesTheFractionsOfMoves) {
    for (int i = 0; i < 40; ++i) {
        moveBy(0.25, -0.75);
    }
    EXPECT_EQ(movementIn(seen()), QPointF(10, -30));
}

TEST_P(EventPosterContract, TakesPlacesFarOutsideTheScreen) {
    moveBy(1e9, -1e9);
    moveBy(1e308, 1e308);
    press(leftKey);
    EXPECT_THAT(linesOf(seen(), QStringLiteral("Left")), ElementsAre("down Left", "up Left"));
}

TEST_P(EventPosterContract, TakesEventsFromTwoThreadsAtOnce) {
    constexpr int count = 200;
    {
        const std::jthread pointer([this] {
            for (int i = 0; i < count; ++i) {
                moveBy(1, i % 2 == 0 ? 1 : -1);
            }
        });
        for (int i = 0; i < count; ++i) {
            press(leftKey);
        }
    }
    const auto lines = seen();
    EXPECT_EQ(linesOf(lines, QStringLiteral("Left")),
              repeated({QStringLiteral("down Left"), QStringLiteral("up Left")}, count));
    EXPECT_EQ(movementIn(lines), QPointF(count, 0));
}

TEST_P(EventPosterContract, NeverBlocks) {
    if (!trial().stall()) {
        GTEST_SKIP() << "this desktop cannot be made to stand still";
    }
    constexpr int count = 100;
    for (int i = 0; i < count; ++i) {
        (void)poster().canMakeEvents();
        press(leftKey);
        moveBy(1, 0);
    }
    trial().resume(); // who is here has not been blocked
    EXPECT_EQ(linesOf(seen(), QStringLiteral("Left")),
              repeated({QStringLiteral("down Left"), QStringLiteral("up Left")}, count));
}

TEST_P(EventPosterContract, LetsEventsVanishWhereTheDesktopForbidsThem) {
    if (!trial().forbid()) {
        GTEST_SKIP() << "this desktop forbids nothing";
    }
    press(leftKey);
    type(QStringLiteral("gone"));
    moveBy(5, 5);
    click();
    trial().allow();
    press(rightKey);
    EXPECT_THAT(seen(), ElementsAre("down Right", "up Right")) << "none is kept for later";
}

} // namespace brenvale
