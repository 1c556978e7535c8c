#include "platform/linux/input/X11Keymap.h"

#include <algorithm>
#include <array>
#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace brenvale {

namespace {

// What they do besides has no place in a text: they would run a program's shortcuts, whatever is pressed.
constexpr quint32 control = 4;
constexpr quint32 alt = 8;
constexpr quint32 super = 0x40;
constexpr quint32 ofShortcuts = control | alt | super;

struct ContextUnref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};

bool isOfKeypad(quint32 keysym) {
    return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
}

/// Characters have several keysyms, of which a layout has any; keys have their own.
quint32 canonical(quint32 keysym) {
    const auto character = xkb_keysym_to_utf32(keysym);
    constexpr quint32 firstPrintable = 0x20;
    constexpr quint32 lastControl = 0x9f;
    constexpr quint32 firstControl = 0x7f;
    const bool isPrintable =
        character >= firstPrintable && (character < firstControl || character > lastControl);
    return isPrintable && !isOfKeypad(keysym) ? xkb_utf32_to_keysym(character) : keysym;
}

} // namespace

void X11Keymap::KeymapUnref::operator()(xkb_keymap* keymap) const {
    xkb_keymap_unref(keymap);
}

void X11Keymap::StateUnref::operator()(xkb_state* state) const {
    xkb_state_unref(state);
}

std::unique_ptr<X11Keymap> X11Keymap::read(const X11Display& display) {
    const std::unique_ptr<xkb_context, ContextUnref> context(
        xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    if (!context) {
        return nullptr;
    }
    const auto device = xkb_x11_get_core_keyboard_device_id(display.connection());
    if (device < 0) {
        return nullptr;
    }
    auto* keymap = xkb_x11_keymap_new_from_device(context.get(), display.connection(), device,
                                                  XKB_KEYMAP_COMPILE_NO_FLAGS);
    return keymap != nullptr ? std::make_unique<X11Keymap>(keymap) : nullptr;
}

X11Keymap::X11Keymap(xkb_keymap* keymap)
    : keymap_(keymap),
      state_(xkb_state_new(keymap)),
      groupCount_(std::max(1, static_cast<int>(xkb_keymap_num_layouts(keymap)))),
      firstKeycode_(static_cast<quint8>(xkb_keymap_min_keycode(keymap))),
      lastKeycode_(static_cast<quint8>(std::min(xkb_keymap_max_keycode(keymap), 255U))) {
    collectPlaces();
}

X11Keymap::~X11Keymap() = default;

void X11Keymap::collectPlaces() {
    for (quint32 keycode = firstKeycode_; keycode <= lastKeycode_; ++keycode) {
        collectKey(keycode);
    }
}

void X11Keymap::collectKey(quint32 keycode) {
    for (quint32 group = 0; group < xkb_keymap_num_layouts_for_key(keymap_.get(), keycode); ++group) {
        for (quint32 level = 0; level < xkb_keymap_num_levels_for_key(keymap_.get(), keycode, group);
             ++level) {
            const xkb_keysym_t* keysyms = nullptr;
            const int count =
                xkb_keymap_key_get_syms_by_level(keymap_.get(), keycode, group, level, &keysyms);
            if (count == 1 && !isOfKeypad(keysyms[0])) {
                places_[canonical(keysyms[0])].push_back({static_cast<quint8>(keycode), group, level});
            }
        }
    }
}

quint32 X11Keymap::onlyKeysymOf(quint8 keycode) const {
    quint32 only = 0;
    for (quint32 group = 0; group < xkb_keymap_num_layouts_for_key(keymap_.get(), keycode); ++group) {
        for (quint32 level = 0; level < xkb_keymap_num_levels_for_key(keymap_.get(), keycode, group);
             ++level) {
            const xkb_keysym_t* keysyms = nullptr;
            const int count =
                xkb_keymap_key_get_syms_by_level(keymap_.get(), keycode, group, level, &keysyms);
            if (count > 1 || (count == 1 && only != 0 && only != keysyms[0])) {
                return 0;
            }
            only = count == 1 ? keysyms[0] : only;
        }
    }
    return only;
}

void X11Keymap::setState(const KeyboardState& state, quint32 additionallyHeld) const {
    const auto group = [](int number) {
        return static_cast<xkb_layout_index_t>(number);
    };
    xkb_state_update_mask(state_.get(), (state.heldModifiers | additionallyHeld) & ~ofShortcuts,
                          state.latchedModifiers & ~ofShortcuts, state.lockedModifiers & ~ofShortcuts,
                          group(state.heldGroup), group(state.latchedGroup), group(state.lockedGroup));
}

quint32 X11Keymap::modifiersHeldBy(quint8 keycode, int group) const {
    setState({.lockedGroup = group}, 0);
    xkb_state_update_key(state_.get(), keycode, XKB_KEY_DOWN);
    const auto held = xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_DEPRESSED);
    const auto heldGroup = xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_DEPRESSED);
    xkb_state_update_key(state_.get(), keycode, XKB_KEY_UP);
    const auto left = xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_EFFECTIVE);
    const auto groupLeft = xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_LOCKED);
    const bool isOnlyHeld = left == 0 && heldGroup == 0 && groupLeft == static_cast<quint32>(group);
    constexpr quint32 realModifiers = 0xff;
    return isOnlyHeld ? held & realModifiers : 0;
}

std::vector<X11Keymap::ModifierKeycode> X11Keymap::findModifierKeycodes(int group) const {
    std::vector<ModifierKeycode> found;
    for (quint32 keycode = firstKeycode_; keycode <= lastKeycode_; ++keycode) {
        const auto modifiers = modifiersHeldBy(static_cast<quint8>(keycode), group);
        if (modifiers != 0) {
            found.push_back({static_cast<quint8>(keycode), modifiers});
        }
    }
    return found;
}

std::span<const X11Keymap::ModifierKeycode> X11Keymap::modifierKeycodes(int group) {
    auto [place, isNew] = modifierKeycodes_.try_emplace(group);
    if (isNew) {
        place->second = findModifierKeycodes(group);
    }
    return place->second;
}

/// The keys that hold `modifiers` and no others.
std::optional<std::vector<quint8>> X11Keymap::keycodesHolding(quint32 modifiers, int group) {
    std::vector<quint8> keycodes;
    for (const auto& key : modifierKeycodes(group)) {
        if (modifiers != 0 && (key.modifiers & ~modifiers) == 0) {
            keycodes.push_back(key.keycode);
            modifiers &= ~key.modifiers;
        }
    }
    return modifiers == 0 ? std::optional(std::move(keycodes)) : std::nullopt;
}

bool X11Keymap::gives(const Place& place, quint32 keysym, const KeyboardState& state, quint32 held) const {
    setState(state, held);
    return canonical(xkb_state_key_get_one_sym(state_.get(), place.keycode)) == keysym;
}

std::optional<Stroke> X11Keymap::strokeAt(const Place& place, quint32 keysym, const KeyboardState& state) {
    std::array<xkb_mod_mask_t, 16> masks{};
    const auto count = xkb_keymap_key_get_mods_for_level(keymap_.get(), place.keycode, place.group,
                                                         place.level, masks.data(), masks.size());
    for (const auto mask : std::span(masks).first(count)) {
        const auto missing = mask & ~state.modifiers();
        if (!gives(place, keysym, state, missing)) {
            continue;
        }
        if (auto keycodes = keycodesHolding(missing, state.group)) {
            return Stroke{.modifierKeycodes = std::move(*keycodes), .keycode = place.keycode};
        }
    }
    return {};
}

std::optional<Stroke> X11Keymap::strokeFor(quint32 keysym, const KeyboardState& state) {
    const auto wanted = canonical(keysym);
    const auto places = places_.find(wanted);
    if (places == places_.end()) {
        return {};
    }
    std::optional<Stroke> best;
    for (const auto& place : places->second) {
        auto stroke = strokeAt(place, wanted, state);
        if (stroke && (!best || stroke->modifierKeycodes.size() < best->modifierKeycodes.size())) {
            best = std::move(stroke);
        }
    }
    return best;
}

std::optional<int> X11Keymap::groupFor(quint32 keysym, const KeyboardState& state) {
    for (int group = 0; group < groupCount_; ++group) {
        auto other = state;
        other.heldGroup = 0;
        other.latchedGroup = 0;
        other.lockedGroup = group;
        other.group = group;
        if (group != state.group && strokeFor(keysym, other)) {
            return group;
        }
    }
    return {};
}

std::optional<Stroke> X11Keymap::keyFor(quint32 keysym, int group) {
    return strokeFor(keysym, {.lockedGroup = group, .group = group});
}

} // namespace brenvale
