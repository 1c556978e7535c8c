#include "platform/linux/input/VirtualKeymap.h"

#include <gmock/gmock.h>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

using namespace brenvale;

namespace {

/// A keymap as a client sees it.
class ClientKeymap {
public:
    explicit ClientKeymap(const VirtualKeymap& keymap)
        : keymap_(xkb_keymap_new_from_string(context_.get(), keymap.text().constData(),
                                             XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS)),
          state_(keymap_ ? xkb_state_new(keymap_.get()) : nullptr) {}

    [[nodiscard]] bool isValid() const { return keymap_ != nullptr; }

    [[nodiscard]] char32_t characterOf(quint16 code) const {
        return xkb_state_key_get_utf32(state_.get(), code + 8U);
    }

    [[nodiscard]] quint32 keysymOf(quint16 code) const {
        return xkb_state_key_get_one_sym(state_.get(), code + 8U);
    }

    void setModifiers(quint32 mask) { xkb_state_update_mask(state_.get(), mask, 0, 0, 0, 0, 0); }

    [[nodiscard]] bool isActive(const char* modifier) const {
        return xkb_state_mod_name_is_active(state_.get(), modifier, XKB_STATE_MODS_EFFECTIVE) == 1;
    }

private:
    template <auto release>
    struct Release {
        void operator()(auto* object) const { release(object); }
    };

    std::unique_ptr<xkb_context, Release<xkb_context_unref>> context_{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
    std::unique_ptr<xkb_keymap, Release<xkb_keymap_unref>> keymap_;
    std::unique_ptr<xkb_state, Release<xkb_state_unref>> state_;
};

/// What a client reads of the keys for `text`.
std::u32string typed(const VirtualKeymap& keymap, std::u32string_view text) {
    const ClientKeymap client(keymap);
    std::u32string characters;
    for (const auto character : text) {
        const auto code = keymap.codeOf(character);
        characters.push_back(code && client.isValid() ? client.characterOf(*code) : U'?');
    }
    return characters;
}

} // namespace

TEST(VirtualKeymap, HoldsAnyCharacter) {
    VirtualKeymap keymap;
    const std::u32string text =
        U"aA zZ 09~`\\\"'<> äß€éàñ Ελλ при שלום مرح 漢字かな한국 😀👩‍👧 "
        U"e\u0301\u00a0\u200b";
    const auto [length, isChanged] = keymap.cover(text);
    EXPECT_EQ(length, text.size());
    EXPECT_TRUE(isChanged);
    EXPECT_TRUE(typed(keymap, text) == text);
}

TEST(VirtualKeymap, IsTheSameForCharactersThatItHolds) {
    VirtualKeymap keymap;
    EXPECT_TRUE(keymap.cover(U"hello").isChanged);
    const auto text = keymap.text();
    EXPECT_FALSE(keymap.cover(U"hole").isChanged);
    EXPECT_EQ(keymap.text(), text);
    EXPECT_TRUE(keymap.cover(U"help").isChanged);
    EXPECT_TRUE(typed(keymap, U"hello help") == U"hello?help") << "earlier ones stay where they are";
}

TEST(VirtualKeymap, TakesALongTextInParts) {
    VirtualKeymap keymap;
    std::u32string text;
    for (char32_t character = 0x4e00; character < 0x4e00 + 1000; ++character) {
        text.push_back(character);
    }
    for (std::u32string_view rest = text; !rest.empty();) {
        const auto [length, isChanged] = keymap.cover(rest);
        ASSERT_GE(length, std::min(rest.size(), std::size_t{150}));
        EXPECT_TRUE(isChanged);
        EXPECT_TRUE(typed(keymap, rest.substr(0, length)) == rest.substr(0, length));
        rest.remove_prefix(length);
    }
}

TEST(VirtualKeymap, RepeatedCharactersTakeNoRoom) {
    VirtualKeymap keymap;
    EXPECT_EQ(keymap.cover(std::u32string(5000, U'x')).length, 5000);
}

TEST(VirtualKeymap, LineEndsAndTabsAreKeys) {
    VirtualKeymap keymap;
    EXPECT_FALSE(keymap.cover(U"\n\t").isChanged);
    const ClientKeymap client(keymap);
    ASSERT_TRUE(client.isValid());
    EXPECT_EQ(keymap.codeOf(U'\n'), KEY_ENTER);
    EXPECT_EQ(client.keysymOf(KEY_ENTER), quint32{XKB_KEY_Return});
    EXPECT_EQ(keymap.codeOf(U'\t'), KEY_TAB);
    EXPECT_EQ(client.keysymOf(KEY_TAB), quint32{XKB_KEY_Tab});
}

TEST(VirtualKeymap, KeysStandWhereEveryKeyboardHasThem) {
    VirtualKeymap keymap;
    std::u32string text;
    for (char32_t character = 0x3041; character < 0x3041 + 400; ++character) {
        text.push_back(character);
    }
    keymap.cover(text); // all the room there is
    const ClientKeymap client(keymap);
    ASSERT_TRUE(client.isValid());
    for (const int number : {36, 51, 53, 55, 58, 59, 123, 124, 125, 126}) {
        const auto key = keyOf(static_cast<quint16>(number));
        ASSERT_TRUE(key);
        EXPECT_EQ(client.keysymOf(key->evdevCode), key->keysym) << number;
    }
    for (const qint64 number : {0, 1, 2, 3, 7, 16, 17, 18, 21, 22}) {
        const auto half = systemKeyPressOf({.subtype = 8, .data1 = (number << 16) | 0xa00});
        ASSERT_TRUE(half);
        EXPECT_EQ(client.keysymOf(half->key.evdevCode), half->key.keysym) << number;
    }
}

TEST(VirtualKeymap, ModifiersAreWhatClientsTakeThemFor) {
    const VirtualKeymap keymap;
    ClientKeymap client(keymap);
    ASSERT_TRUE(client.isValid());
    struct Row {
        quint64 flag;
        const char* name;
    };
    for (const auto& row :
         {Row{0x20000, "Shift"}, Row{0x40000, "Control"}, Row{0x80000, "Mod1"}, Row{0x100000, "Mod4"}}) {
        client.setModifiers(modifierMaskOf(row.flag));
        for (const auto* name : {"Shift", "Lock", "Control", "Mod1", "Mod4"}) {
            EXPECT_EQ(client.isActive(name), row.name == std::string_view(name))
                << name << " for " << row.name;
        }
    }
    EXPECT_EQ(modifierMaskOf(0x120000), 0x41U);
    EXPECT_EQ(modifierMaskOf(0), 0U);
}
