#include "platform/linux/input/LayoutKeysyms.h"

#include "platform/linux/input/KeyTable.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string_view>

#include <xkbcommon/xkbcommon.h>

using namespace brenvale;

namespace {

/// The keymap of these layouts, as a compositor sends it.
QByteArray keymapOf(const char* layouts) {
    auto* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{.rules = "evdev", .model = "pc105", .layout = layouts};
    auto* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    auto* text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    QByteArray copy(text);
    std::free(text); // NOLINT: the library's own memory
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return copy;
}

bool holds(const std::set<quint32>& keysyms, std::u32string_view characters) {
    return std::ranges::all_of(
        characters, [&keysyms](char32_t character) { return keysyms.contains(keysymOf(character)); });
}

bool holdsAny(const std::set<quint32>& keysyms, std::u32string_view characters) {
    return std::ranges::any_of(
        characters, [&keysyms](char32_t character) { return keysyms.contains(keysymOf(character)); });
}

constexpr std::u32string_view letters = U"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

} // namespace

TEST(LayoutKeysyms, OfOneLayoutAreItsOwn) {
    const auto american = keysymsOfEveryLayout(keymapOf("us"));
    EXPECT_TRUE(holds(american, letters));
    EXPECT_TRUE(holds(american, U" 0123456789!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"));
    EXPECT_FALSE(holdsAny(american, U"äßéяλ😀"));
    const auto german = keysymsOfEveryLayout(keymapOf("de"));
    EXPECT_TRUE(holds(german, letters));
    EXPECT_TRUE(holds(german, U"äöüÄÖÜß@€{}[]\\"));
    EXPECT_FALSE(holdsAny(german, U"^`éя")) << "they need a dead key";
}

TEST(LayoutKeysyms, OfALayoutWithoutLatinHaveNoLatin) {
    const auto russian = keysymsOfEveryLayout(keymapOf("ru"));
    EXPECT_TRUE(holds(russian, U"привет 123!"));
    EXPECT_FALSE(holdsAny(russian, letters));
}

TEST(LayoutKeysyms, OfSeveralLayoutsAreThoseThatAllHave) {
    const auto both = keysymsOfEveryLayout(keymapOf("us,ru"));
    EXPECT_FALSE(holdsAny(both, letters)) << "nobody tells which layout is active";
    EXPECT_TRUE(holds(both, U" 0123456789!%"));
    const auto latin = keysymsOfEveryLayout(keymapOf("us,de"));
    EXPECT_TRUE(holds(latin, letters));
    EXPECT_FALSE(holdsAny(latin, U"äöü^`"));
}

TEST(LayoutKeysyms, AreNoneForWhatIsNoKeymap) {
    for (const auto* text : {"", "xkb_keymap {", "\xff\xfe", "hello"}) {
        EXPECT_TRUE(keysymsOfEveryLayout(text).empty()) << text;
    }
}
