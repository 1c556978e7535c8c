#pragma once

#include "platform/linux/input/X11Display.h"

#include <map>
#include <vector>

#include <QByteArray>

namespace brenvale {

/// Changes what keycodes stand for, on all keyboards of the server and in one step: programs hear of it once,
/// and some take long over it. Each keyboard keeps all its other keys, also where it has a layout of its own.
/// One thread, which may wait for the server.
class X11KeyMeanings {
public:
    explicit X11KeyMeanings(const X11Display& display) : display_(display) {}

    /// The keycodes that stand for nothing on any keyboard.
    [[nodiscard]] std::vector<quint8> unused() const;

    /// Each keycode stands for its one keysym from now on, whatever is held; for nothing where that is 0.
    /// Comes back when the server has done it.
    void set(const std::map<quint8, quint32>& meanings) const;

private:
    /// The keys of one keyboard, from a first one on, each as the server describes it.
    struct Keyboard {
        quint16 device = 0;
        std::vector<QByteArray> keys;
    };

    [[nodiscard]] std::vector<Keyboard> read(quint8 first, quint8 last) const;
    void write(const Keyboard& keyboard, quint8 first) const;

    const X11Display& display_;
};

} // namespace brenvale
