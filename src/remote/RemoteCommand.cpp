#include "remote/RemoteCommand.h"

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

constexpr QStringView louder = u"set volume output volume (output volume of (get volume settings) + 5)";
constexpr QStringView quieter = u"set volume output volume (output volume of (get volume settings) - 5)";
constexpr QStringView emptyTrash = uR"(tell application "Finder" to empty trash)";
constexpr QStringView lockScreen = uR"(tell application "System Events" to lock screen)";
constexpr QStringView sleep = uR"(tell application "System Events" to sleep)";

constexpr bool needsAccess = true;
constexpr bool isFree = false;

// In the order in which names are compared. The volume goes by scripts here, and mute and brightness by the
// system's keys without a look at the permission: without it the desktop drops them.
constexpr std::array commands{
    RemoteCommand{"vol_up", isFree, PerformScript{louder}},
    RemoteCommand{"vol_down", isFree, PerformScript{quieter}},
    RemoteCommand{"mute_mac", isFree, PressSystemKey{7}},
    RemoteCommand{"unmute_mac", isFree, PressSystemKey{7}}, // neither knows the state: both flip it
    RemoteCommand{"open_url", isFree, OpenUrl{}},
    RemoteCommand{"empty_trash", isFree, PerformScript{emptyTrash}},
    RemoteCommand{"key_escape", needsAccess, PressKey{53}},
    RemoteCommand{"key_right", needsAccess, PressKey{124}},
    RemoteCommand{"key_left", needsAccess, PressKey{123}},
    RemoteCommand{"key_up", needsAccess, PressKey{126}},
    RemoteCommand{"key_down", needsAccess, PressKey{125}},
    RemoteCommand{"key_return", needsAccess, PressKey{36}},
    RemoteCommand{"key_delete", needsAccess, PressKey{51}},
    RemoteCommand{"key_control", needsAccess, PressKey{59}},
    RemoteCommand{"key_option", needsAccess, PressKey{58}},
    RemoteCommand{"key_command", needsAccess, PressKey{55}},
    RemoteCommand{"next", needsAccess, PressKey{124}},
    RemoteCommand{"slide_next", needsAccess, PressKey{124}},
    RemoteCommand{"presentation_next", needsAccess, PressKey{124}},
    RemoteCommand{"seek_forward", needsAccess, PressKey{124}},
    RemoteCommand{"prev", needsAccess, PressKey{123}},
    RemoteCommand{"slide_prev", needsAccess, PressKey{123}},
    RemoteCommand{"presentation_prev", needsAccess, PressKey{123}},
    RemoteCommand{"seek_backward", needsAccess, PressKey{123}},
    RemoteCommand{"brightness_up", isFree, PressSystemKey{21}}, // the keyboard's light, not the display
    RemoteCommand{"brightness_down", isFree, PressSystemKey{22}},
    RemoteCommand{"screen_brightness_up", isFree, PressSystemKey{2}},
    RemoteCommand{"screen_brightness_down", isFree, PressSystemKey{3}},
    RemoteCommand{"lock_mac", needsAccess, PerformScript{lockScreen}},
    RemoteCommand{"sleep_mac", needsAccess, PerformScript{sleep}},
};

struct MediaKey {
    std::string_view command;
    qint32 key;
};

constexpr std::array mediaKeys{
    MediaKey{"play_pause", 16}, MediaKey{"next", 17},    MediaKey{"prev", 18},
    MediaKey{"vol_up", 0},      MediaKey{"vol_down", 1},
};

struct Modifier {
    std::string_view name;
    quint64 flag;
};

constexpr std::array modifierFlags{
    Modifier{"cmd", 0x100000},
    Modifier{"ctrl", 0x40000},
    Modifier{"option", 0x80000},
    Modifier{"shift", 0x20000},
};

bool hasInfix(std::string_view command) {
    static constexpr std::array<std::string_view, 3> infixes{"_key_", "_slide_", "_presentation_"};
    return std::ranges::any_of(
        infixes, [command](std::string_view infix) { return command.find(infix) != std::string_view::npos; });
}

} // namespace

SplitCommand splitCommand(std::string_view command) {
    if (!hasInfix(command)) {
        return {.name = command, .modifiers = {}};
    }
    const auto end = command.find('_');
    SplitCommand split{.name = command.substr(end + 1), .modifiers = {}};
    auto rest = command.substr(0, end);
    for (auto plus = rest.find('+'); plus != std::string_view::npos; plus = rest.find('+')) {
        split.modifiers.push_back(rest.substr(0, plus));
        rest.remove_prefix(plus + 1);
    }
    split.modifiers.push_back(rest);
    return split;
}

const RemoteCommand* remoteCommandOf(std::string_view name) {
    const auto* row = std::ranges::find(commands, name, &RemoteCommand::name);
    return row == commands.end() ? nullptr : row;
}

std::optional<qint32> mediaKeyOf(std::string_view command) {
    const auto* row = std::ranges::find(mediaKeys, command, &MediaKey::command);
    return row == mediaKeys.end() ? std::nullopt : std::optional(row->key);
}

quint64 flagsOf(const std::vector<std::string_view>& modifiers) {
    quint64 flags = 0;
    for (const auto name : modifiers) {
        const auto* modifier = std::ranges::find(modifierFlags, name, &Modifier::name);
        flags |= modifier == modifierFlags.end() ? 0 : modifier->flag;
    }
    return flags;
}

QString openLocationScript(QStringView url) {
    return QStringLiteral("open location \"") + url.toString() + u'"';
}

} // namespace brenvale
