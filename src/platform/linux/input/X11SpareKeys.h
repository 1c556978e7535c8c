#pragma once

#include "platform/linux/input/X11KeyMeanings.h"
#include "platform/linux/input/X11Layout.h"

#include <map>
#include <set>
#include <span>
#include <vector>

namespace brenvale {

/// Gives keycodes without a meaning one for a while, for characters and keys that the layout lacks. What is
/// lent stands in a property of the root window, so that the next start can take back what a process left
/// behind that was killed. One thread, which may wait for the server.
class X11SpareKeys {
public:
    X11SpareKeys(X11Display& display, X11Layout& layout);

    /// Whether another process that runs has lent keys, or has changed the group.
    [[nodiscard]] bool isInOtherHands() const;

    /// Takes back what a process that is gone has left.
    void mend();

    /// How many keysyms can be lent at once.
    [[nodiscard]] std::size_t capacity();

    /// Lends keycodes to all of `keysyms`, as many as there are; those that have one keep it, others may lose
    /// theirs. Returns at once: programs take a moment to notice.
    void lend(std::span<const quint32> keysyms);

    /// Whether `keysym` has a lent keycode.
    [[nodiscard]] bool isLent(quint32 keysym) const { return lent_.contains(keysym); }

    /// Whether `lend` would take keycodes away from others that were used since `noteTaken`.
    [[nodiscard]] bool wouldTakeUsed(std::span<const quint32> keysyms);

    /// A key was pressed; programs may not have read it yet.
    void noteUse(quint8 keycode);
    /// Programs have read all keys that were pressed so far.
    void noteTaken() { used_.clear(); }

    [[nodiscard]] bool hasLent() const { return !lent_.empty(); }
    void takeAllBack();

    /// Notes in the property that the group of the layout was changed for a while; the same twice for "it was
    /// not".
    void noteGroup(int before, int ours);

private:
    [[nodiscard]] bool isStillOurs(quint32 keysym, quint8 keycode);
    void forgetLost();
    void takeUnneeded(std::span<const quint32> keysyms, std::size_t count, std::vector<quint8>& taken);
    void writeProperty(const std::map<quint32, quint8>& alsoLent = {}) const;
    [[nodiscard]] std::vector<quint32> readProperty(xcb_window_t window) const;
    [[nodiscard]] bool isAlive(xcb_window_t owner, quint32 mark) const;

    X11Display& display_;
    X11Layout& layout_;
    X11KeyMeanings meanings_;
    xcb_window_t owner_ = XCB_WINDOW_NONE; ///< lives as long as the connection does
    quint32 mark_ = 0;                     ///< which of all processes that had such a window
    xcb_atom_t atom_ = XCB_ATOM_NONE;
    std::map<quint32, quint8> lent_; ///< keycodes by keysym
    std::set<quint8> used_;
    int groupBefore_ = 0;
    int groupOfOurs_ = 0;
};

} // namespace brenvale
