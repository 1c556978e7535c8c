#pragma once

#include <QByteArray>

#include <cstdlib>

#include <xkbcommon/xkbcommon.h>

namespace brenvale {

/// The keymap of these layouts ("us", "de,ru"), as a compositor sends it. Empty where the system lacks one.
inline QByteArray keymapOf(const char* layouts) {
    auto* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{.rules = "evdev", .model = "pc105", .layout = layouts};
    auto* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    auto* text = keymap != nullptr ? xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1) : nullptr;
    QByteArray copy(text);
    std::free(text); // NOLINT: the library's own memory
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return copy;
}

} // namespace brenvale
