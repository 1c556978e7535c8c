#include "platform/linux/input/X11Typing.h"

#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <ranges>
#include <vector>

namespace brenvale {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// The state of the keyboard is looked at again after so many characters: the user may press Shift at any
// time, and garbles what is under way then.
constexpr std::size_t pieceLength = 4;
// How far a program may lag behind before it gets time to catch up.
constexpr std::size_t mostUnread = 256;
// A program that has read nothing for so long hangs; the text goes on without heed of it.
constexpr milliseconds patience{5000};
// Programs notice a changed layout before the first key of it comes.
constexpr milliseconds settling{20};
// Keys that are lent stay so for a while after the last one was pressed.
constexpr milliseconds idling{600};
// How far ahead characters that need lent keys are looked for.
constexpr std::size_t farthest = 4096;

// How long the user gets to let go of modifiers, before each piece and before the whole text.
constexpr milliseconds longForShortcuts{2000};
constexpr milliseconds longForShift{300};

constexpr quint32 shift = 1;
constexpr quint32 shortcutModifiers = 4 | 8 | 0x40; // Control, Alt, Super

} // namespace

void X11Typing::type(std::u32string_view characters) {
    if (characters.empty()) {
        return;
    }
    if (!stateForText(longForShift)) {
        return;
    }
    receiver_.find();
    while (!characters.empty() && goesOn()) {
        keepPace();
        const auto count = typePiece(characters);
        if (count == 0) {
            break;
        }
        characters.remove_prefix(count);
    }
    restoreGroup();
    noteUse();
    display_.flush();
}

/// The state of the keyboard once the user lets go of what is in the way. Under Control or Alt a text would
/// be a string of shortcuts: nothing where they stay down. Shift does no harm, and is waited for `forShift`.
std::optional<KeyboardState> X11Typing::stateForText(milliseconds forShift) {
    constexpr milliseconds step{5};
    const auto start = steady_clock::now();
    for (;;) {
        const auto state = display_.keyboardState();
        const auto held = state ? state->heldModifiers : 0;
        const bool isShortcut = (held & shortcutModifiers) != 0;
        const auto waited = steady_clock::now() - start;
        if (!isShortcut && ((held & shift) == 0 || waited >= forShift)) {
            return state;
        }
        if (waited >= longForShortcuts || !goesOn()) {
            return {};
        }
        wait_([] { return false; }, step);
    }
}

bool X11Typing::goesOn() {
    return wait_([] { return true; }, milliseconds{0});
}

/// Waits where the receiver lags behind.
void X11Typing::keepPace() {
    if (unread_ >= mostUnread) {
        receiver_.waitUntilRead(patience);
        spareKeys_.noteTaken();
        unread_ = 0;
    }
}

std::size_t X11Typing::typePiece(std::u32string_view characters) {
    // Somebody may change the group or the layout while we make ready for it.
    constexpr int tries = 4;
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto state = stateForText(milliseconds{0});
        auto* keymap = layout_.current();
        if (keymap == nullptr || !state) {
            return 0;
        }
        if (const auto sent = sendPiece(characters, *keymap, *state); sent > 0) {
            display_.flush();
            unread_ += sent;
            return sent;
        }
        const auto group =
            attempt < 2 ? keymap->groupFor(keysymOf(characters.front()), *state) : std::nullopt;
        if (group) {
            switchGroup(*group, *state);
        } else if (!lendFor(characters, *state)) {
            break;
        }
    }
    return 1; // there is no way to type this one
}

std::size_t X11Typing::sendPiece(std::u32string_view characters, X11Keymap& keymap,
                                 const KeyboardState& state) {
    // A latched modifier is for the next key alone.
    const auto most = state.latchedModifiers != 0 || state.latchedGroup != 0 ? 1 : pieceLength;
    std::size_t sent = 0;
    for (const auto character : characters.substr(0, most)) {
        const auto stroke = keymap.strokeFor(keysymOf(character), state);
        if (!stroke) {
            break;
        }
        send(*stroke);
        ++sent;
    }
    return sent;
}

void X11Typing::switchGroup(int group, const KeyboardState& state) {
    const int count = layout_.current() != nullptr ? layout_.current()->groupCount() : 1;
    const int locked = ((group - state.heldGroup - state.latchedGroup) % count + count) % count;
    if (!groupChange_) {
        groupChange_ = {.before = state.lockedGroup, .ours = locked};
    }
    groupChange_->ours = locked;
    spareKeys_.noteGroup(groupChange_->before, locked);
    display_.lockGroup(locked);
}

/// Unless somebody has chosen another group in the meantime.
void X11Typing::restoreGroup() {
    if (!groupChange_) {
        return;
    }
    const auto state = display_.keyboardState();
    if (state && state->lockedGroup == groupChange_->ours) {
        display_.lockGroup(groupChange_->before);
    }
    groupChange_.reset();
    spareKeys_.noteGroup(0, 0);
}

/// Lends keys to the first of `characters` and to as many of those behind it as there are keys.
bool X11Typing::lendFor(std::u32string_view characters, const KeyboardState& state) {
    const auto capacity = spareKeys_.capacity();
    auto* keymap = layout_.current();
    if (keymap == nullptr) {
        return false;
    }
    std::vector<quint32> keysyms;
    for (const auto character : characters.substr(0, farthest)) {
        const auto keysym = keysymOf(character);
        if (keysyms.size() == capacity) {
            break;
        }
        if (keysym != 0 && std::ranges::find(keysyms, keysym) == keysyms.end() &&
            (spareKeys_.isLent(keysym) ||
             (!keymap->strokeFor(keysym, state) && !keymap->groupFor(keysym, state)))) {
            keysyms.push_back(keysym);
        }
    }
    if (keysyms.empty()) {
        return false;
    }
    if (spareKeys_.wouldTakeUsed(keysyms)) {
        receiver_.waitUntilRead(patience);
        spareKeys_.noteTaken();
        unread_ = 0;
    }
    spareKeys_.lend(keysyms);
    wait_([] { return false; }, settling);
    return true;
}

void X11Typing::send(const Stroke& stroke) {
    for (const auto modifier : stroke.modifierKeycodes) {
        display_.sendKey(modifier, true);
    }
    display_.sendKey(stroke.keycode, true);
    display_.sendKey(stroke.keycode, false);
    for (const auto modifier : stroke.modifierKeycodes | std::views::reverse) {
        display_.sendKey(modifier, false);
    }
    spareKeys_.noteUse(stroke.keycode);
}

std::optional<steady_clock::time_point> X11Typing::due() const {
    return spareKeys_.hasLent() ? std::optional(lastUse_ + idling) : std::nullopt;
}

void X11Typing::noteUse() {
    lastUse_ = steady_clock::now();
}

void X11Typing::takeBack(milliseconds limit) {
    receiver_.waitUntilRead(limit);
    unread_ = 0;
    spareKeys_.takeAllBack();
}

} // namespace brenvale
