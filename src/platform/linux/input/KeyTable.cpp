#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <array>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace brenvale {

namespace {

struct NumberedKey {
    int number;
    LinuxKey key;
};

// "Delete" is the key that deletes backwards.
constexpr std::array virtualKeys{
    NumberedKey{36, {XKB_KEY_Return, KEY_ENTER}},  NumberedKey{51, {XKB_KEY_BackSpace, KEY_BACKSPACE}},
    NumberedKey{53, {XKB_KEY_Escape, KEY_ESC}},    NumberedKey{55, {XKB_KEY_Super_L, KEY_LEFTMETA}},
    NumberedKey{58, {XKB_KEY_Alt_L, KEY_LEFTALT}}, NumberedKey{59, {XKB_KEY_Control_L, KEY_LEFTCTRL}},
    NumberedKey{123, {XKB_KEY_Left, KEY_LEFT}},    NumberedKey{124, {XKB_KEY_Right, KEY_RIGHT}},
    NumberedKey{125, {XKB_KEY_Down, KEY_DOWN}},    NumberedKey{126, {XKB_KEY_Up, KEY_UP}},
};

constexpr std::array systemKeys{
    NumberedKey{0, {XKB_KEY_XF86AudioRaiseVolume, KEY_VOLUMEUP}},
    NumberedKey{1, {XKB_KEY_XF86AudioLowerVolume, KEY_VOLUMEDOWN}},
    NumberedKey{2, {XKB_KEY_XF86MonBrightnessUp, KEY_BRIGHTNESSUP}},
    NumberedKey{3, {XKB_KEY_XF86MonBrightnessDown, KEY_BRIGHTNESSDOWN}},
    NumberedKey{7, {XKB_KEY_XF86AudioMute, KEY_MUTE}},
    NumberedKey{16, {XKB_KEY_XF86AudioPlay, KEY_PLAYPAUSE}},
    NumberedKey{17, {XKB_KEY_XF86AudioNext, KEY_NEXTSONG}},
    NumberedKey{18, {XKB_KEY_XF86AudioPrev, KEY_PREVIOUSSONG}},
    NumberedKey{21, {XKB_KEY_XF86KbdBrightnessUp, KEY_KBDILLUMUP}},
    NumberedKey{22, {XKB_KEY_XF86KbdBrightnessDown, KEY_KBDILLUMDOWN}},
};

constexpr std::array modifierKeys{
    ModifierKey{0x20000, {XKB_KEY_Shift_L, KEY_LEFTSHIFT}},
    ModifierKey{0x40000, {XKB_KEY_Control_L, KEY_LEFTCTRL}},
    ModifierKey{0x80000, {XKB_KEY_Alt_L, KEY_LEFTALT}},
    ModifierKey{0x100000, {XKB_KEY_Super_L, KEY_LEFTMETA}},
};

constexpr qint16 systemKeySubtype = 8;
constexpr qint64 pressed = 0xa;
constexpr qint64 released = 0xb;

std::optional<LinuxKey> keyIn(std::span<const NumberedKey> table, qint64 number) {
    const auto row = std::ranges::find(table, number, &NumberedKey::number);
    return row != table.end() ? std::optional(row->key) : std::nullopt;
}

bool isNoncharacter(char32_t character) {
    return (character & 0xfffe) == 0xfffe || (character >= 0xfdd0 && character <= 0xfdef);
}

bool isLineEnd(char32_t character) {
    return character == '\n' || character == '\r' || character == 0x85 || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

std::optional<LinuxKey> keyOf(quint16 virtualKeyCode) {
    return keyIn(virtualKeys, virtualKeyCode);
}

std::optional<SystemKeyPress> systemKeyPressOf(const SystemDefinedEvent& event) {
    const auto half = (event.data1 >> 8) & 0xff;
    const auto key = keyIn(systemKeys, event.data1 >> 16);
    if (event.subtype != systemKeySubtype || !key || (half != pressed && half != released)) {
        return {};
    }
    return SystemKeyPress{.key = *key, .isDown = half == pressed};
}

std::vector<LinuxKey> modifierKeysOf(quint64 flags) {
    std::vector<LinuxKey> keys;
    for (const auto& modifier : modifierKeys) {
        if ((flags & modifier.flag) != 0) {
            keys.push_back(modifier.key);
        }
    }
    return keys;
}

std::span<const ModifierKey> allModifierKeys() {
    return modifierKeys;
}

std::u32string typedCharacters(const QString& text) {
    std::u32string characters;
    characters.reserve(static_cast<std::size_t>(text.size()));
    char32_t previous = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        char32_t character = text[index].unicode();
        if (text[index].isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text[index], text[index + 1]);
            ++index;
        }
        const bool endsPair = previous == '\r' && character == '\n';
        previous = character;
        if (isLineEnd(character)) {
            characters.append(endsPair ? 0 : 1, U'\n');
        } else if (character == '\t' || (QChar::category(character) != QChar::Other_Control &&
                                         !QChar::isSurrogate(character) && !isNoncharacter(character))) {
            characters.push_back(character);
        }
    }
    return characters;
}

quint32 keysymOf(char32_t character) {
    switch (character) {
    case U'\n':
        return XKB_KEY_Return;
    case U'\t':
        return XKB_KEY_Tab;
    default:
        return xkb_utf32_to_keysym(character);
    }
}

} // namespace brenvale
