#pragma once

#include "platform/linux/input/X11Receiver.h"
#include "platform/linux/input/X11SpareKeys.h"

#include <chrono>
#include <optional>
#include <string_view>

namespace brenvale {

/// Types text: what the layout has by its keys, the rest by lent ones. One thread.
class X11Typing {
public:
    X11Typing(X11Display& display, X11Layout& layout, X11SpareKeys& spareKeys, X11Wait wait)
        : display_(display),
          layout_(layout),
          spareKeys_(spareKeys),
          receiver_(display, wait),
          wait_(std::move(wait)) {}

    /// Types `characters` whole; ends early where `wait` says so, where the connection is broken, and where
    /// the user holds Control, Alt or Super and does not let go: the rest is dropped.
    void type(std::u32string_view characters);

    /// When the lent keys are due back, if there are any; a later key or text puts it off.
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> due() const;
    void noteUse();

    /// Takes the lent keys back once what they typed has been read.
    void takeBack(std::chrono::milliseconds limit);

private:
    [[nodiscard]] std::optional<KeyboardState> stateForText(std::chrono::milliseconds forShift);
    [[nodiscard]] bool goesOn();
    void keepPace();
    /// Types as many of `characters` as go in one piece and returns how many; none where it cannot go on.
    [[nodiscard]] std::size_t typePiece(std::u32string_view characters);
    [[nodiscard]] std::size_t sendPiece(std::u32string_view characters, X11Keymap& keymap,
                                        const KeyboardState& state);
    [[nodiscard]] bool lendFor(std::u32string_view characters, const KeyboardState& state);
    void switchGroup(int group, const KeyboardState& state);
    void restoreGroup();
    void send(const Stroke& stroke);

    X11Display& display_;
    X11Layout& layout_;
    X11SpareKeys& spareKeys_;
    X11Receiver receiver_;
    X11Wait wait_;
    struct GroupChange {
        int before = 0;
        int ours = 0;
    };
    std::optional<GroupChange> groupChange_;
    std::size_t unread_ = 0; ///< characters sent since the receiver was known to have read all
    std::chrono::steady_clock::time_point lastUse_;
};

} // namespace brenvale
