#include "platform/linux/input/KeyTable.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

using namespace brenvale;

namespace {

SystemDefinedEvent systemEvent(qint64 key, qint64 word) {
    return {.flags = static_cast<quint64>(word), .subtype = 8, .data1 = key << 16 | word, .data2 = -1};
}

} // namespace

TEST(KeyTable, EachVirtualKeyHasItsKey) {
    const std::pair<quint16, LinuxKey> keys[]{
        {36, {XKB_KEY_Return, KEY_ENTER}},  {51, {XKB_KEY_BackSpace, KEY_BACKSPACE}},
        {53, {XKB_KEY_Escape, KEY_ESC}},    {55, {XKB_KEY_Super_L, KEY_LEFTMETA}},
        {58, {XKB_KEY_Alt_L, KEY_LEFTALT}}, {59, {XKB_KEY_Control_L, KEY_LEFTCTRL}},
        {123, {XKB_KEY_Left, KEY_LEFT}},    {124, {XKB_KEY_Right, KEY_RIGHT}},
        {125, {XKB_KEY_Down, KEY_DOWN}},    {126, {XKB_KEY_Up, KEY_UP}},
    };
    for (const auto& [number, key] : keys) {
        EXPECT_EQ(keyOf(number), key) << number;
    }
}

TEST(KeyTable, OtherVirtualKeysHaveNone) {
    int known = 0;
    for (int number = 0; number <= 0xffff; ++number) {
        known += keyOf(static_cast<quint16>(number)) ? 1 : 0;
    }
    EXPECT_EQ(known, 10);
}

TEST(KeyTable, EachSystemKeyHasItsKey) {
    const std::pair<qint64, LinuxKey> keys[]{
        {0, {XKB_KEY_XF86AudioRaiseVolume, KEY_VOLUMEUP}},
        {1, {XKB_KEY_XF86AudioLowerVolume, KEY_VOLUMEDOWN}},
        {2, {XKB_KEY_XF86MonBrightnessUp, KEY_BRIGHTNESSUP}},
        {3, {XKB_KEY_XF86MonBrightnessDown, KEY_BRIGHTNESSDOWN}},
        {7, {XKB_KEY_XF86AudioMute, KEY_MUTE}},
        {16, {XKB_KEY_XF86AudioPlay, KEY_PLAYPAUSE}},
        {17, {XKB_KEY_XF86AudioNext, KEY_NEXTSONG}},
        {18, {XKB_KEY_XF86AudioPrev, KEY_PREVIOUSSONG}},
        {21, {XKB_KEY_XF86KbdBrightnessUp, KEY_KBDILLUMUP}},
        {22, {XKB_KEY_XF86KbdBrightnessDown, KEY_KBDILLUMDOWN}},
    };
    for (const auto& [number, key] : keys) {
        EXPECT_EQ(systemKeyPressOf(systemEvent(number, 0xa00)), (SystemKeyPress{key, true})) << number;
        EXPECT_EQ(systemKeyPressOf(systemEvent(number, 0xb00)), (SystemKeyPress{key, false})) << number;
    }
}

TEST(KeyTable, OtherSystemEventsAreNoPress) {
    EXPECT_EQ(systemKeyPressOf(systemEvent(4, 0xa00)), std::nullopt);
    EXPECT_EQ(systemKeyPressOf(systemEvent(16, 0xc00)), std::nullopt);
    auto event = systemEvent(16, 0xa00);
    event.subtype = 7;
    EXPECT_EQ(systemKeyPressOf(event), std::nullopt);
    event = systemEvent(-1, 0xa00);
    EXPECT_EQ(systemKeyPressOf(event), std::nullopt);
}

TEST(KeyTable, FlagsNameTheirModifiers) {
    const LinuxKey shift{XKB_KEY_Shift_L, KEY_LEFTSHIFT};
    const LinuxKey control{XKB_KEY_Control_L, KEY_LEFTCTRL};
    const LinuxKey alt{XKB_KEY_Alt_L, KEY_LEFTALT};
    const LinuxKey super{XKB_KEY_Super_L, KEY_LEFTMETA};
    EXPECT_EQ(modifierKeysOf(0), std::vector<LinuxKey>{});
    EXPECT_EQ(modifierKeysOf(0x120000), (std::vector{shift, super}));
    EXPECT_EQ(modifierKeysOf(0xc0000), (std::vector{control, alt}));
    EXPECT_EQ(modifierKeysOf(~quint64{0}), (std::vector{shift, control, alt, super}));
    EXPECT_EQ(modifierKeysOf(0xa00), std::vector<LinuxKey>{});
}

TEST(TypedCharacters, EachLineEndIsOneReturn) {
    EXPECT_EQ(typedCharacters(QStringLiteral("a\nb\r\nc\rd\n\ne\r\r\nf")), U"a\nb\nc\nd\n\ne\n\nf");
    EXPECT_EQ(typedCharacters(QStringLiteral(u"a\u2028b\u2029c\u0085d")), U"a\nb\nc\nd");
}

TEST(TypedCharacters, ControlCharactersAreLeftOutAndTabsAreNot) {
    EXPECT_EQ(typedCharacters(QStringLiteral(u"a\tb\u0000c\u001b[0m\u007f\u009bd\b\v\f")), U"a\tbc[0md");
}

TEST(TypedCharacters, WhatJoinsAndDirectsCharactersStays) {
    const auto text = QStringLiteral(u"👩\u200d👧 e\u0301 \u200fשלום\u200e \ufe0f\u00ad\u00a0");
    const auto characters = typedCharacters(text);
    EXPECT_EQ(QString::fromUcs4(characters.data(), static_cast<qsizetype>(characters.size())), text);
}

TEST(TypedCharacters, HalvesOfPairsAndWhatIsNoCharacterAreLeftOut) {
    QString text = QStringLiteral("a");
    text += QChar(0xd83d);
    text += QStringLiteral("b");
    text += QChar(0xde00);
    text += QChar(0xffff);
    text += QChar(0xfdd0);
    text += QChar(0xd83d);
    EXPECT_EQ(typedCharacters(text), U"ab");
}

TEST(KeysymOf, ClassicKeysymsComeFirst) {
    EXPECT_EQ(keysymOf(U'a'), quint32{XKB_KEY_a});
    EXPECT_EQ(keysymOf(U'ü'), quint32{XKB_KEY_udiaeresis});
    EXPECT_EQ(keysymOf(U'€'), quint32{XKB_KEY_EuroSign});
    EXPECT_EQ(keysymOf(U'я'), quint32{XKB_KEY_Cyrillic_ya});
    EXPECT_EQ(keysymOf(U'\n'), quint32{XKB_KEY_Return});
    EXPECT_EQ(keysymOf(U'\t'), quint32{XKB_KEY_Tab});
    EXPECT_EQ(keysymOf(U'😀'), 0x1000000U | U'😀');
    EXPECT_EQ(keysymOf(U'\u0301'), 0x1000301U);
}
