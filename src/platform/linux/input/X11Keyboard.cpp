#include "platform/linux/input/X11Keyboard.h"

#include "platform/linux/input/KeyTable.h"

#include <ranges>

namespace brenvale {

namespace {

// Window managers and the like have to notice a new key and ask for it before it is pressed.
constexpr std::chrono::milliseconds noticing{100};

} // namespace

void X11Keyboard::post(const KeyEvent& event) {
    const auto key = keyOf(event.keyCode);
    if (!key) {
        return;
    }
    if (event.isDown) {
        press(key->keysym, event.flags);
    } else {
        release(key->keysym);
    }
}

void X11Keyboard::post(const SystemDefinedEvent& event) {
    const auto half = systemKeyPressOf(event);
    if (!half) {
        return;
    }
    if (half->isDown) {
        press(half->key.keysym, 0);
    } else {
        release(half->key.keysym);
    }
}

void X11Keyboard::press(quint32 keysym, quint64 flags) {
    release(keysym); // a second press is a new one
    const auto state = display_.keyboardState();
    auto stroke = state ? strokeOf(keysym, state->group) : std::nullopt;
    if (!stroke) {
        return;
    }
    auto modifiers = missingModifiers(flags, *state);
    std::erase(modifiers, stroke->keycode);
    modifiers.insert(modifiers.end(), stroke->modifierKeycodes.begin(), stroke->modifierKeycodes.end());
    stroke->modifierKeycodes = std::move(modifiers);
    for (const auto modifier : stroke->modifierKeycodes) {
        display_.sendKey(modifier, true);
    }
    display_.sendKey(stroke->keycode, true);
    spareKeys_.noteUse(stroke->keycode);
    held_.emplace(keysym, std::move(*stroke));
}

void X11Keyboard::release(quint32 keysym) {
    const auto held = held_.extract(keysym);
    if (held.empty()) {
        return;
    }
    display_.sendKey(held.mapped().keycode, false);
    for (const auto modifier : held.mapped().modifierKeycodes | std::views::reverse) {
        display_.sendKey(modifier, false);
    }
}

void X11Keyboard::releaseAll() {
    while (isHolding()) {
        release(held_.begin()->first);
    }
}

std::optional<Stroke> X11Keyboard::strokeOf(quint32 keysym, int group) {
    auto* keymap = layout_.current();
    auto stroke = keymap != nullptr ? keymap->keyFor(keysym, group) : std::nullopt;
    if (stroke || keymap == nullptr) {
        return stroke;
    }
    spareKeys_.lend({&keysym, 1});
    wait_([] { return false; }, noticing);
    keymap = layout_.current();
    return keymap != nullptr ? keymap->keyFor(keysym, group) : std::nullopt;
}

/// The keys of those modifiers that are not down already: they are ours to release.
std::vector<quint8> X11Keyboard::missingModifiers(quint64 flags, const KeyboardState& state) {
    std::vector<quint8> keycodes;
    for (const auto& modifier : modifierKeysOf(flags)) {
        auto* keymap = layout_.current();
        const auto stroke = keymap != nullptr ? keymap->keyFor(modifier.keysym, state.group) : std::nullopt;
        if (!stroke) {
            continue;
        }
        const auto brings = keymap->modifiersHeldBy(stroke->keycode, state.group);
        if (brings == 0 || (brings & ~state.modifiers()) != 0) {
            keycodes.push_back(stroke->keycode);
        }
    }
    return keycodes;
}

} // namespace brenvale
