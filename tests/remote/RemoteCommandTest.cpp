#include "remote/RemoteCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brenvale {

namespace {

using testing::Optional;

SplitCommand split(std::string_view name, std::vector<std::string_view> modifiers) {
    return {.name = name, .modifiers = std::move(modifiers)};
}

/// What `name` means, and whether it needs the permission.
void expectRow(std::string_view name, bool needsAccess, const RemoteAction& action) {
    const auto* row = remoteCommandOf(name);
    ASSERT_NE(row, nullptr) << name;
    EXPECT_EQ(row->name, name);
    EXPECT_EQ(row->needsAccess, needsAccess) << name;
    EXPECT_EQ(row->action, action) << name;
}

constexpr bool guarded = true;
constexpr bool free = false;

} // namespace

TEST(SplitCommand, ModifiersStandBeforeTheFirstUnderscore) {
    EXPECT_EQ(splitCommand("ctrl_key_left"), split("key_left", {"ctrl"}));
    EXPECT_EQ(splitCommand("cmd+shift_key_left"), split("key_left", {"cmd", "shift"}));
    EXPECT_EQ(splitCommand("ctrl_slide_next"), split("slide_next", {"ctrl"}));
    EXPECT_EQ(splitCommand("cmd_presentation_next"), split("presentation_next", {"cmd"}));
}

TEST(SplitCommand, CommandWithoutAnInfixIsItsOwnName) {
    for (const auto* command : {"key_left", "cmd_next", "cmd+shift_vol_up", "next", "", "_", "slide_next",
                                "presentation_next", "cmd_key", "cmd_KEY_left"}) {
        EXPECT_EQ(splitCommand(command), split(command, {}));
    }
}

TEST(SplitCommand, InfixMayStandAnywhere) {
    EXPECT_EQ(splitCommand("a_slide_b"), split("slide_b", {"a"}));
    EXPECT_EQ(splitCommand("a_b_key_left"), split("b_key_left", {"a"}));
    EXPECT_EQ(splitCommand("a_b_c_slide_"), split("b_c_slide_", {"a"}));
    EXPECT_EQ(splitCommand("a_presentation_key_left"), split("presentation_key_left", {"a"}));
}

TEST(SplitCommand, PiecesThatAreEmptyAreKept) {
    EXPECT_EQ(splitCommand("_key_left"), split("key_left", {""}));
    EXPECT_EQ(splitCommand("cmd+_key_left"), split("key_left", {"cmd", ""}));
    EXPECT_EQ(splitCommand("++_key_left"), split("key_left", {"", "", ""}));
    EXPECT_EQ(splitCommand("__key_left"), split("_key_left", {""}));
    EXPECT_EQ(splitCommand("cmd__key__left_"), split("_key__left_", {"cmd"}));
}

TEST(SplitCommand, NamesOfModifiersAreNotTested) {
    EXPECT_EQ(splitCommand("meta+Über+cmd_key_up"), split("key_up", {"meta", "Über", "cmd"}));
}

TEST(SplitCommand, PlusBehindTheFirstUnderscoreIsPartOfTheName) {
    EXPECT_EQ(splitCommand("cmd_key_left+shift"), split("key_left+shift", {"cmd"}));
}

TEST(RemoteCommand, VolumeGoesByScriptsAndIsFree) {
    expectRow("vol_up", free,
              PerformScript{u"set volume output volume (output volume of (get volume settings) + 5)"});
    expectRow("vol_down", free,
              PerformScript{u"set volume output volume (output volume of (get volume settings) - 5)"});
}

TEST(RemoteCommand, MuteAndUnmuteAreTheSameKey) {
    expectRow("mute_mac", free, PressSystemKey{7});
    expectRow("unmute_mac", free, PressSystemKey{7});
}

TEST(RemoteCommand, AddressAndTrashAreFree) {
    expectRow("open_url", free, OpenUrl{});
    expectRow("empty_trash", free, PerformScript{u"tell application \"Finder\" to empty trash"});
}

TEST(RemoteCommand, KeysNeedThePermission) {
    expectRow("key_escape", guarded, PressKey{53});
    expectRow("key_right", guarded, PressKey{124});
    expectRow("key_left", guarded, PressKey{123});
    expectRow("key_up", guarded, PressKey{126});
    expectRow("key_down", guarded, PressKey{125});
    expectRow("key_return", guarded, PressKey{36});
    expectRow("key_delete", guarded, PressKey{51});
    expectRow("key_control", guarded, PressKey{59});
    expectRow("key_option", guarded, PressKey{58});
    expectRow("key_command", guarded, PressKey{55});
}

TEST(RemoteCommand, NextAndItsLikesAreTheRightArrow) {
    for (const auto* name : {"next", "slide_next", "presentation_next", "seek_forward"}) {
        expectRow(name, guarded, PressKey{124});
    }
}

TEST(RemoteCommand, PrevAndItsLikesAreTheLeftArrow) {
    for (const auto* name : {"prev", "slide_prev", "presentation_prev", "seek_backward"}) {
        expectRow(name, guarded, PressKey{123});
    }
}

TEST(RemoteCommand, BrightnessIsTheKeyboardsAndScreenBrightnessTheDisplays) {
    expectRow("brightness_up", free, PressSystemKey{21});
    expectRow("brightness_down", free, PressSystemKey{22});
    expectRow("screen_brightness_up", free, PressSystemKey{2});
    expectRow("screen_brightness_down", free, PressSystemKey{3});
}

TEST(RemoteCommand, LockAndSleepNeedThePermission) {
    expectRow("lock_mac", guarded, PerformScript{u"tell application \"System Events\" to lock screen"});
    expectRow("sleep_mac", guarded, PerformScript{u"tell application \"System Events\" to sleep"});
}

TEST(RemoteCommand, OtherWordsMeanNothing) {
    for (const auto* name : {"", "play_pause", "key_tab", "Next", "next ", "slide_b", "cmd_next", "remote",
                             "lock", "vol", "key_left\xc2\xa0"}) {
        EXPECT_EQ(remoteCommandOf(name), nullptr) << name;
    }
    EXPECT_EQ(remoteCommandOf(std::string_view("next\0", 5)), nullptr);
}

TEST(MediaKey, FiveWordsHaveOne) {
    EXPECT_THAT(mediaKeyOf("play_pause"), Optional(16));
    EXPECT_THAT(mediaKeyOf("next"), Optional(17));
    EXPECT_THAT(mediaKeyOf("prev"), Optional(18));
    EXPECT_THAT(mediaKeyOf("vol_up"), Optional(0));
    EXPECT_THAT(mediaKeyOf("vol_down"), Optional(1));
}

TEST(MediaKey, OtherWordsHaveNone) {
    for (const auto* command : {"", "mute_mac", "key_left", "Next", "play_pause ", "cmd_slide_next"}) {
        EXPECT_EQ(mediaKeyOf(command), std::nullopt) << command;
    }
}

TEST(ModifierFlags, EachNameHasItsBit) {
    EXPECT_EQ(flagsOf({"cmd"}), 0x100000U);
    EXPECT_EQ(flagsOf({"ctrl"}), 0x40000U);
    EXPECT_EQ(flagsOf({"option"}), 0x80000U);
    EXPECT_EQ(flagsOf({"shift"}), 0x20000U);
    EXPECT_EQ(flagsOf({"cmd", "shift"}), 0x120000U);
    EXPECT_EQ(flagsOf({"shift", "option", "ctrl", "cmd"}), 0x1e0000U);
}

TEST(ModifierFlags, UnknownAndRepeatedNamesAddNothing) {
    EXPECT_EQ(flagsOf({}), 0U);
    EXPECT_EQ(flagsOf({"meta", "Cmd", "", "control", " shift"}), 0U);
    EXPECT_EQ(flagsOf({"cmd", "cmd"}), 0x100000U);
}

TEST(OpenLocationScript, TakesTheAddressAsItIs) {
    EXPECT_EQ(openLocationScript(u"https://example.org/?a=1&b=%20"),
              QStringLiteral("open location \"https://example.org/?a=1&b=%20\""));
    EXPECT_EQ(openLocationScript(u""), QStringLiteral("open location \"\""));
    EXPECT_EQ(openLocationScript(u"a\" b\\"), QStringLiteral("open location \"a\" b\\\""));
}

} // namespace brenvale
