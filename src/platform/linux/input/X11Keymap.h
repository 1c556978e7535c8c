#pragma once

#include "platform/linux/input/X11Display.h"

#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

struct xkb_keymap;
struct xkb_state;

namespace brenvale {

/// What to press for one key or character: the modifier keys first, in their order.
struct Stroke {
    std::vector<quint8> modifierKeycodes;
    quint8 keycode = 0;

    friend bool operator==(const Stroke&, const Stroke&) = default;
};

/// Which keys of the layout stand for what, as the programs that receive them read it. The layout as it was
/// when this was made. One thread.
class X11Keymap {
public:
    /// The layout of the server's keyboard; null where it cannot be had. Waits for the server.
    [[nodiscard]] static std::unique_ptr<X11Keymap> read(const X11Display& display);

    /// Takes over one reference to `keymap`.
    explicit X11Keymap(xkb_keymap* keymap);
    X11Keymap(const X11Keymap&) = delete;
    X11Keymap& operator=(const X11Keymap&) = delete;
    ~X11Keymap();

    /// What gives exactly `keysym` while the keyboard is in `state`, whose held modifiers stay held; none
    /// where no key does in its group.
    [[nodiscard]] std::optional<Stroke> strokeFor(quint32 keysym, const KeyboardState& state);

    /// The group in which some key gives `keysym`, the rest of `state` being as it is; none where there is
    /// none.
    [[nodiscard]] std::optional<int> groupFor(quint32 keysym, const KeyboardState& state);

    /// The one keysym that a keycode stands for in all that it has; 0 where it has none or several.
    [[nodiscard]] quint32 onlyKeysymOf(quint8 keycode) const;

    /// The key of `keysym` in a group, whatever else is held: a key such as Left or Alt is the same key with
    /// other modifiers too.
    [[nodiscard]] std::optional<Stroke> keyFor(quint32 keysym, int group);

    /// The modifiers that a key brings about in a group for as long as it is down, and nothing else.
    [[nodiscard]] quint32 modifiersHeldBy(quint8 keycode, int group) const;

    [[nodiscard]] int groupCount() const { return groupCount_; }

private:
    struct Place {
        quint8 keycode = 0;
        quint32 group = 0;
        quint32 level = 0;
    };
    struct ModifierKeycode {
        quint8 keycode = 0;
        quint32 modifiers = 0;
    };

    void collectPlaces();
    void collectKey(quint32 keycode);
    void setState(const KeyboardState& state, quint32 additionallyHeld) const;
    [[nodiscard]] std::span<const ModifierKeycode> modifierKeycodes(int group);
    [[nodiscard]] std::vector<ModifierKeycode> findModifierKeycodes(int group) const;
    [[nodiscard]] std::optional<std::vector<quint8>> keycodesHolding(quint32 modifiers, int group);
    [[nodiscard]] std::optional<Stroke> strokeAt(const Place& place, quint32 keysym,
                                                 const KeyboardState& state);
    [[nodiscard]] bool gives(const Place& place, quint32 keysym, const KeyboardState& state,
                             quint32 held) const;

    struct KeymapUnref {
        void operator()(xkb_keymap* keymap) const;
    };
    struct StateUnref {
        void operator()(xkb_state* state) const;
    };
    std::unique_ptr<xkb_keymap, KeymapUnref> keymap_;
    std::unique_ptr<xkb_state, StateUnref> state_; ///< a keyboard to try things on
    std::unordered_map<quint32, std::vector<Place>> places_;
    std::unordered_map<int, std::vector<ModifierKeycode>> modifierKeycodes_; ///< by group, made when needed
    int groupCount_ = 1;
    quint8 firstKeycode_ = 0;
    quint8 lastKeycode_ = 0;
};

} // namespace brenvale
