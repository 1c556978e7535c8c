#pragma once

#include "platform/EventPoster.h"

#include <optional>
#include <span>
#include <vector>

#include <QString>

namespace brenvale {

/// A key as Linux numbers it: what it stands for (the keysym of X11 and xkbcommon), and where it is (the code
/// of linux/input-event-codes.h; an X server adds 8).
struct LinuxKey {
    quint32 keysym = 0;
    quint16 evdevCode = 0;

    friend bool operator==(const LinuxKey&, const LinuxKey&) = default;
};

/// A modifier that an event can carry, and the key that brings it about.
struct ModifierKey {
    quint64 flag = 0;
    LinuxKey key;
};

/// One half of a press of a system key.
struct SystemKeyPress {
    LinuxKey key;
    bool isDown = false;

    friend bool operator==(const SystemKeyPress&, const SystemKeyPress&) = default;
};

/// The key of a virtual key number; none for a number that no key has. Pure.
[[nodiscard]] std::optional<LinuxKey> keyOf(quint16 virtualKeyCode);

/// The press or release that `event` tells of; none where it tells of something else. Pure.
[[nodiscard]] std::optional<SystemKeyPress> systemKeyPressOf(const SystemDefinedEvent& event);

/// The keys of the modifiers that `flags` holds, in the order in which they go down. Pure.
[[nodiscard]] std::vector<LinuxKey> modifierKeysOf(quint64 flags);

/// All modifiers that flags can hold, in the order in which they go down.
[[nodiscard]] std::span<const ModifierKey> allModifierKeys();

/// The characters to type for `text`: each kind of line end as one '\n', tabs as '\t', both of which are
/// keys; other control characters, halves of pairs and code points that are no characters are left out. Pure.
[[nodiscard]] std::u32string typedCharacters(const QString& text);

/// What types `character`: Return, Tab, or the character's classic keysym, which is the only one that some
/// compositors know it by. 0 where there is none. Pure.
[[nodiscard]] quint32 keysymOf(char32_t character);

} // namespace brenvale
