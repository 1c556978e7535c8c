#include "platform/linux/clipboard/ClipboardLoan.h"

#include "platform/linux/clipboard/SelectionReading.h"

#include <algorithm>
#include <utility>

namespace brenvale {

namespace {

constexpr std::chrono::milliseconds patience{500};

} // namespace

void ClipboardLoan::lend(const QString& text, std::move_only_function<void()> lent) {
    switch (state_) {
    case State::none:
        state_ = State::keeping;
        waiting_.push_back({.text = text, .lent = std::move(lent)});
        keep(0);
        break;
    case State::keeping:
        endsAtOnce_ = false; // what was given back was an earlier one
        waiting_.push_back({.text = text, .lent = std::move(lent)});
        break;
    case State::lent:
        take(text);
        access_.settle(std::move(lent));
        break;
    case State::ended:
        break;
    }
}

/// One selection after the other; then what waited for it is lent.
void ClipboardLoan::keep(std::size_t number) {
    if (number < sides_.size()) {
        readContents(access_, sides_.at(number).selection, patience,
                     [this, number](ClipboardContents contents) {
                         if (auto& side = sides_.at(number); !side.isHeldBack) {
                             side.kept = std::move(contents);
                         }
                         keep(number + 1);
                     });
        return;
    }
    if (state_ == State::ended) {
        return;
    }
    state_ = State::lent;
    for (auto& loan : std::exchange(waiting_, {})) {
        take(loan.text);
        access_.settle(std::move(loan.lent));
    }
    if (std::exchange(endsAtOnce_, false)) {
        giveBack();
    }
}

void ClipboardLoan::end() {
    if (state_ == State::keeping) { // nothing of it is to be seen any more
        waiting_.clear();
        state_ = State::none;
    }
    giveBack();
    state_ = State::ended;
}

void ClipboardLoan::take(const QString& text) {
    for (auto& side : sides_) {
        side.shown = ClipboardContents::ofText(text);
        markAsSecret(side.shown); // it is typed, not copied: no history is to keep it
        access_.own(side.selection, side.shown);
    }
}

void ClipboardLoan::giveBack() {
    if (state_ == State::keeping) {
        endsAtOnce_ = true;
        return;
    }
    if (state_ == State::ended) {
        return;
    }
    state_ = State::none;
    for (auto& side : sides_) {
        const auto kept = std::exchange(side.kept, std::nullopt);
        const auto* owned = access_.owned(side.selection);
        const bool isOurs = owned != nullptr && *owned == side.shown;
        if (kept && (isOurs || side.isHeldBack)) {
            access_.own(side.selection, *kept);
        }
        side.isHeldBack = false;
        side.shown = {};
    }
}

bool ClipboardLoan::holdBack(Selection selection, const ClipboardContents& contents) {
    if (state_ == State::none || state_ == State::ended) {
        return false;
    }
    for (auto& side : sides_) {
        if (side.selection == selection) {
            side.kept = contents;
            side.isHeldBack = true;
        }
    }
    return true;
}

} // namespace brenvale
