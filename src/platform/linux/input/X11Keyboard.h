#pragma once

#include "platform/EventPoster.h"
#include "platform/linux/input/X11SpareKeys.h"
#include "platform/linux/input/X11Wait.h"

#include <map>

namespace brenvale {

/// Presses and releases single keys, with the modifiers that belong to them. One thread.
class X11Keyboard {
public:
    X11Keyboard(X11Display& display, X11Layout& layout, X11SpareKeys& spareKeys, X11Wait wait)
        : display_(display), layout_(layout), spareKeys_(spareKeys), wait_(std::move(wait)) {}

    /// A key that is no text.
    void post(const KeyEvent& event);
    void post(const SystemDefinedEvent& event);

    [[nodiscard]] bool isHolding() const { return !held_.empty(); }
    void releaseAll();

private:
    void press(quint32 keysym, quint64 flags);
    void release(quint32 keysym);
    [[nodiscard]] std::optional<Stroke> strokeOf(quint32 keysym, int group);
    [[nodiscard]] std::vector<quint8> missingModifiers(quint64 flags, const KeyboardState& state);

    X11Display& display_;
    X11Layout& layout_;
    X11SpareKeys& spareKeys_;
    X11Wait wait_;
    std::map<quint32, Stroke> held_; ///< by keysym
};

} // namespace brenvale
