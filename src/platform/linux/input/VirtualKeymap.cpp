#include "platform/linux/input/VirtualKeymap.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <set>

#include <linux/input-event-codes.h>

namespace brenvale {

namespace {

constexpr quint16 highestCode = 247; // keycodes end at 255, and are 8 higher
constexpr quint16 offset = 8;

struct RealModifier {
    quint16 code;
    const char* name;
    quint32 mask;
};

constexpr std::array realModifiers{
    RealModifier{KEY_LEFTSHIFT, "Shift", 1U << 0U},
    RealModifier{KEY_LEFTCTRL, "Control", 1U << 2U},
    RealModifier{KEY_LEFTALT, "Mod1", 1U << 3U},
    RealModifier{KEY_LEFTMETA, "Mod4", 1U << 6U},
};

/// All keys that have numbers, the modifiers among them.
std::vector<LinuxKey> fixedKeys() {
    std::vector<LinuxKey> keys{{keysymOf(U'\n'), KEY_ENTER}, {keysymOf(U'\t'), KEY_TAB}};
    const auto add = [&keys](const LinuxKey& key) {
        if (std::ranges::find(keys, key) == keys.end()) {
            keys.push_back(key);
        }
    };
    for (const auto& modifier : allModifierKeys()) {
        add(modifier.key);
    }
    constexpr quint16 virtualKeyCodes = 128;
    for (const auto code : std::views::iota(quint16{0}, virtualKeyCodes)) {
        if (const auto key = keyOf(code)) {
            add(*key);
        }
    }
    constexpr qint64 press = 0xa00;
    constexpr qint64 systemKeys = 32;
    for (const auto number : std::views::iota(qint64{0}, systemKeys)) {
        if (const auto key = systemKeyPressOf({.subtype = 8, .data1 = (number << 16) | press})) {
            add(key->key);
        }
    }
    return keys;
}

QByteArray name(quint16 code) {
    return "<K" + QByteArray::number(code) + '>';
}

} // namespace

VirtualKeymap::VirtualKeymap() : fixed_(fixedKeys()) {
    for (quint16 code = 1; code <= highestCode; ++code) {
        if (std::ranges::find(fixed_, code, &LinuxKey::evdevCode) == fixed_.end()) {
            freeCodes_.push_back(code);
        }
    }
}

VirtualKeymap::Coverage VirtualKeymap::cover(std::u32string_view text) {
    std::set<char32_t> wanted;
    std::size_t length = 0;
    for (const auto character : text) {
        if (keysymOf(character) != 0 && character != U'\n' && character != U'\t') {
            if (wanted.size() == freeCodes_.size() && !wanted.contains(character)) {
                break;
            }
            wanted.insert(character);
        }
        ++length;
    }
    const auto isNew = [this](char32_t character) {
        return !characters_.contains(character);
    };
    const auto added = static_cast<std::size_t>(std::ranges::count_if(wanted, isNew));
    if (added > freeKeys()) {
        characters_.clear();
    }
    bool isChanged = false;
    for (const auto character : wanted | std::views::filter(isNew)) {
        characters_.emplace(character, freeCodes_[characters_.size()]);
        isChanged = true;
    }
    return {.length = length, .isChanged = isChanged};
}

std::optional<quint16> VirtualKeymap::codeOf(char32_t character) const {
    if (character == U'\n' || character == U'\t') {
        return character == U'\n' ? KEY_ENTER : KEY_TAB;
    }
    const auto place = characters_.find(character);
    return place != characters_.end() ? std::optional(place->second) : std::nullopt;
}

QByteArray VirtualKeymap::text() const {
    QByteArray keycodes;
    QByteArray symbols;
    const auto add = [&](quint16 code, quint32 keysym) {
        keycodes += name(code) + " = " + QByteArray::number(code + offset) + ";\n";
        symbols += "key " + name(code) + " { [ 0x" + QByteArray::number(keysym, 16) + " ] };\n";
    };
    for (const auto& key : fixed_) {
        add(key.evdevCode, key.keysym);
    }
    for (const auto& [character, code] : characters_) {
        add(code, keysymOf(character));
    }
    for (const auto& modifier : realModifiers) {
        symbols += "modifier_map " + QByteArray(modifier.name) + " { " + name(modifier.code) + " };\n";
    }
    return "xkb_keymap {\nxkb_keycodes \"brenvale\" {\nminimum = 8;\nmaximum = 255;\n" + keycodes +
           "};\nxkb_types \"brenvale\" { include \"complete\" };\n"
           "xkb_compatibility \"brenvale\" { include \"complete\" };\nxkb_symbols \"brenvale\" {\n" +
           symbols + "};\n};\n";
}

quint32 modifierMaskOf(quint64 flags) {
    quint32 mask = 0;
    for (const auto& key : modifierKeysOf(flags)) {
        const auto* modifier = std::ranges::find(realModifiers, key.evdevCode, &RealModifier::code);
        mask |= modifier != realModifiers.end() ? modifier->mask : 0;
    }
    return mask;
}

} // namespace brenvale
