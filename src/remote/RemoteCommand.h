#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace brenvale {

/// A key to press, with whatever modifiers stand before the command.
struct PressKey {
    quint16 keyCode = 0;

    friend bool operator==(const PressKey&, const PressKey&) = default;
};

/// A key of the system's own to press, such as mute or the display's brightness.
struct PressSystemKey {
    qint32 key = 0;

    friend bool operator==(const PressSystemKey&, const PressSystemKey&) = default;
};

/// A script to perform as it stands.
struct PerformScript {
    QStringView source;

    friend bool operator==(const PerformScript&, const PerformScript&) = default;
};

/// The message's "url" to open, by a script.
struct OpenUrl {
    friend bool operator==(const OpenUrl&, const OpenUrl&) = default;
};

using RemoteAction = std::variant<PressKey, PressSystemKey, PerformScript, OpenUrl>;

/// A row of the table of commands.
struct RemoteCommand {
    std::string_view name;
    bool needsAccess = false; ///< only with the permission to post events
    RemoteAction action;
};

/// A command without the modifiers that stood before it, of which no name is tested. Views of the whole.
struct SplitCommand {
    std::string_view name;
    std::vector<std::string_view> modifiers;

    friend bool operator==(const SplitCommand&, const SplitCommand&) = default;
};

/// Takes the modifiers off a command such as "cmd+shift_key_left". Only commands with "_key_", "_slide_" or
/// "_presentation_" in them have any; every other one is its own name. Pure.
[[nodiscard]] SplitCommand splitCommand(std::string_view command);

/// What a command without its modifiers means; null for a word that means nothing. Pure.
[[nodiscard]] const RemoteCommand* remoteCommandOf(std::string_view name);

/// The system key of a command of the type "media", where only five words mean something. Pure.
[[nodiscard]] std::optional<qint32> mediaKeyOf(std::string_view command);

/// The event flags of modifier names; unknown names add nothing. Pure.
[[nodiscard]] quint64 flagsOf(const std::vector<std::string_view>& modifiers);

/// The script that opens an address, which goes in as it is: one with a quotation mark ends the text early.
/// Pure.
[[nodiscard]] QString openLocationScript(QStringView url);

} // namespace brenvale
