#include "platform/linux/input/LayoutKeysyms.h"

#include "TestKeymap.h"

#include "platform/linux/input/KeyTable.h"

#include <gmock/gmock.h>

#include <string_view>

using namespace brenvale;

namespace {

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
