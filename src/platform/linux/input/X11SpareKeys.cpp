#include "platform/linux/input/X11SpareKeys.h"

#include "platform/linux/X11Connection.h"

#include <algorithm>
#include <array>
#include <vector>

#include <QRandomGenerator>

namespace brenvale {

namespace {

constexpr auto propertyName = "_BRENVALE_SPARE_KEYS";
constexpr quint8 wordSize = 32;

// The words of the property: a window of whoever wrote it and the number that it bears, the group before and
// the one that was locked instead, then pairs of a keycode and its keysym.
constexpr std::size_t headLength = 4;

} // namespace

X11SpareKeys::X11SpareKeys(X11Display& display, X11Layout& layout)
    : display_(display),
      layout_(layout),
      meanings_(display),
      owner_(xcb_generate_id(display.connection())),
      mark_(QRandomGenerator::global()->generate()),
      atom_(x11Atom(display.connection(), propertyName)) {
    xcb_create_window(display_.connection(), XCB_COPY_FROM_PARENT, owner_, display_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    // The server gives the numbers of windows that are gone to others.
    xcb_change_property(display_.connection(), XCB_PROP_MODE_REPLACE, owner_, atom_, XCB_ATOM_CARDINAL,
                        wordSize, 1, &mark_);
}

std::size_t X11SpareKeys::capacity() {
    forgetLost();
    return lent_.size() + meanings_.unused().size();
}

bool X11SpareKeys::isStillOurs(quint32 keysym, quint8 keycode) {
    auto* keymap = layout_.current();
    return keymap != nullptr && keymap->onlyKeysymOf(keycode) == keysym;
}

/// Whoever loads another layout takes back what we lent.
void X11SpareKeys::forgetLost() {
    std::erase_if(lent_, [this](const auto& entry) { return !isStillOurs(entry.first, entry.second); });
}

bool X11SpareKeys::wouldTakeUsed(std::span<const quint32> keysyms) {
    forgetLost();
    const auto missing = std::ranges::count_if(keysyms, [this](quint32 keysym) { return !isLent(keysym); });
    return static_cast<std::size_t>(missing) > meanings_.unused().size() && !used_.empty();
}

/// Takes `count` keycodes that none of `keysyms` has.
void X11SpareKeys::takeUnneeded(std::span<const quint32> keysyms, std::size_t count,
                                std::vector<quint8>& taken) {
    for (auto entry = lent_.begin(); entry != lent_.end() && count > 0;) {
        if (std::ranges::find(keysyms, entry->first) != keysyms.end()) {
            ++entry;
            continue;
        }
        taken.push_back(entry->second);
        entry = lent_.erase(entry);
        --count;
    }
}

void X11SpareKeys::lend(std::span<const quint32> keysyms) {
    forgetLost();
    auto free = meanings_.unused();
    const auto before = lent_;
    std::vector<quint32> missing;
    std::ranges::copy_if(keysyms, std::back_inserter(missing),
                         [this](quint32 keysym) { return !isLent(keysym); });
    if (missing.size() > free.size()) {
        takeUnneeded(keysyms, missing.size() - free.size(), free);
    }
    std::map<quint8, quint32> changes;
    for (std::size_t index = 0; index < missing.size() && index < free.size(); ++index) {
        changes.emplace(free[index], missing[index]);
        lent_.emplace(missing[index], free[index]);
    }
    writeProperty(before); // in between, each key has the one meaning or the other
    meanings_.set(changes);
    writeProperty();
}

void X11SpareKeys::noteUse(quint8 keycode) {
    if (std::ranges::any_of(lent_, [keycode](const auto& entry) { return entry.second == keycode; })) {
        used_.insert(keycode);
    }
}

void X11SpareKeys::takeAllBack() {
    forgetLost();
    std::map<quint8, quint32> changes;
    for (const auto& [keysym, keycode] : lent_) {
        changes.emplace(keycode, 0);
    }
    meanings_.set(changes);
    lent_.clear();
    used_.clear();
    writeProperty();
    display_.flush();
}

void X11SpareKeys::noteGroup(int before, int ours) {
    groupBefore_ = before;
    groupOfOurs_ = ours;
    writeProperty();
}

void X11SpareKeys::writeProperty(const std::map<quint32, quint8>& alsoLent) const {
    if (lent_.empty() && alsoLent.empty() && groupBefore_ == groupOfOurs_) {
        xcb_delete_property(display_.connection(), display_.root(), atom_);
        return;
    }
    std::vector<quint32> words{owner_, mark_, static_cast<quint32>(groupBefore_),
                               static_cast<quint32>(groupOfOurs_)};
    for (const auto* lent : {&lent_, &alsoLent}) {
        for (const auto& [keysym, keycode] : *lent) {
            words.push_back(keycode);
            words.push_back(keysym);
        }
    }
    xcb_change_property(display_.connection(), XCB_PROP_MODE_REPLACE, display_.root(), atom_,
                        XCB_ATOM_CARDINAL, wordSize, static_cast<quint32>(words.size()), words.data());
}

std::vector<quint32> X11SpareKeys::readProperty(xcb_window_t window) const {
    constexpr quint32 longest = headLength + (std::size_t{4} * 256);
    return x11Cardinals(display_.connection(), window, atom_, longest);
}

bool X11SpareKeys::isAlive(xcb_window_t owner, quint32 mark) const {
    const auto words = readProperty(owner);
    return !words.empty() && words[0] == mark;
}

bool X11SpareKeys::isInOtherHands() const {
    const auto words = readProperty(display_.root());
    return words.size() >= headLength && isAlive(words[0], words[1]);
}

void X11SpareKeys::mend() {
    const auto words = readProperty(display_.root());
    if (words.size() < headLength || isAlive(words[0], words[1])) {
        return; // another one that runs puts its keys right itself
    }
    std::map<quint8, quint32> changes;
    for (std::size_t index = headLength; index + 1 < words.size(); index += 2) {
        const auto keycode = words[index];
        if (keycode <= 0xff && isStillOurs(words[index + 1], static_cast<quint8>(keycode))) {
            changes.emplace(static_cast<quint8>(keycode), 0);
        }
    }
    meanings_.set(changes);
    const auto state = display_.keyboardState();
    if (words[2] != words[3] && state && static_cast<quint32>(state->lockedGroup) == words[3]) {
        display_.lockGroup(static_cast<int>(words[2]));
    }
    writeProperty();
    display_.flush();
}

} // namespace brenvale
