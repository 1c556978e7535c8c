#include "platform/linux/input/LayoutKeysyms.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>

#include <xkbcommon/xkbcommon.h>

namespace brenvale {

namespace {

template <auto release>
struct Release {
    void operator()(auto* object) const { release(object); }
};
using Keymap = std::unique_ptr<xkb_keymap, Release<xkb_keymap_unref>>;

constexpr xkb_level_index_t highestLevel = 2; // plain, Shift, AltGr

Keymap keymapOf(const QByteArray& text) {
    const std::unique_ptr<xkb_context, Release<xkb_context_unref>> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context) {
        return nullptr;
    }
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    return Keymap(xkb_keymap_new_from_string(context.get(), text.constData(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                             XKB_KEYMAP_COMPILE_NO_FLAGS));
}

/// The level at which the first key with a keysym has it, of each keysym of a layout.
std::map<quint32, xkb_level_index_t> levelsOf(xkb_keymap* keymap, xkb_layout_index_t layout) {
    std::map<quint32, xkb_level_index_t> levels;
    const auto last = xkb_keymap_max_keycode(keymap);
    for (auto key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        const auto layouts = xkb_keymap_num_layouts_for_key(keymap, key);
        if (layouts == 0) {
            continue;
        }
        const auto own = layout % layouts;
        const auto count = xkb_keymap_num_levels_for_key(keymap, key, own);
        for (xkb_level_index_t level = 0; level < count; ++level) {
            const xkb_keysym_t* keysyms = nullptr;
            if (xkb_keymap_key_get_syms_by_level(keymap, key, own, level, &keysyms) == 1) {
                levels.try_emplace(*keysyms, level);
            }
        }
    }
    return levels;
}

} // namespace

std::set<quint32> keysymsOfEveryLayout(const QByteArray& keymap) {
    const auto parsed = keymapOf(keymap);
    if (!parsed) {
        return {};
    }
    std::set<quint32> common;
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts(parsed.get()); ++layout) {
        std::set<quint32> own;
        for (const auto& [keysym, level] : levelsOf(parsed.get(), layout)) {
            if (level <= highestLevel) {
                own.insert(keysym);
            }
        }
        if (layout == 0) {
            common = own;
        } else {
            std::erase_if(common, [&own](quint32 keysym) { return !own.contains(keysym); });
        }
    }
    return common;
}

} // namespace brenvale
