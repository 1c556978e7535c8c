#pragma once

#include "platform/linux/input/KeyTable.h"

#include <QByteArray>

#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace brenvale {

/// The keymap of a keyboard of our own: the keys that have numbers stand where every keyboard has them, and
/// the characters of a text on keys that would otherwise stand for nothing. One level, so no modifier is
/// needed for a character. One thread.
class VirtualKeymap {
public:
    VirtualKeymap();

    /// Makes the characters at the head of `text` typeable, as many as keys are left for; characters of
    /// earlier texts go where room is needed. How many of `text` that is, and whether the keymap is another
    /// than before.
    struct Coverage {
        std::size_t length = 0;
        bool isChanged = false;
    };
    Coverage cover(std::u32string_view text);

    /// The code of the key for `character`; none where no cover held it.
    [[nodiscard]] std::optional<quint16> codeOf(char32_t character) const;

    /// The keymap as xkbcommon reads it (format 1 of wl_keyboard).
    [[nodiscard]] QByteArray text() const;

private:
    [[nodiscard]] std::size_t freeKeys() const { return freeCodes_.size() - characters_.size(); }

    std::vector<LinuxKey> fixed_;
    std::vector<quint16> freeCodes_;
    std::map<char32_t, quint16> characters_;
};

/// The real modifiers of any keymap (their bits are the same everywhere) that `flags` stand for. Pure.
[[nodiscard]] quint32 modifierMaskOf(quint64 flags);

} // namespace brenvale
