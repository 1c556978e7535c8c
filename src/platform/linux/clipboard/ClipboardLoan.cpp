#include "platform/linux/clipboard/ClipboardLoan.h"

#include "platform/linux/clipboard/SelectionReading.h"

#include <algorithm>
#include <utility>

namespace brenvale {

namespace {

constexpr std::chrono::milliseconds patience{500};

} // namespace

void ClipboardLoan::lend(const QString& text, std::move_only_function<void()> lent) {
    if (isLent_) {
        take(text);
        access_.settle(std::move(lent));
        return;
    }
    keep(0, [this, text, lent = std::move(lent)]() mutable {
        isLent_ = true;
        take(text);
        access_.settle(std::move(lent));
    });
}

void ClipboardLoan::keep(std::size_t number, std::move_only_function<void()> kept) {
    if (number == sides_.size()) {
        kept();
        return;
    }
    readContents(access_, sides_.at(number).selection, patience,
                 [this, number, kept = std::move(kept)](ClipboardContents contents) mutable {
                     sides_.at(number).kept = std::move(contents);
                     keep(number + 1, std::move(kept));
                 });
}

void ClipboardLoan::take(const QString& text) {
    for (auto& side : sides_) {
        side.shown = ClipboardContents::ofText(text);
        markAsSecret(side.shown); // it is typed, not copied: no history is to keep it
        access_.own(side.selection, side.shown);
    }
}

void ClipboardLoan::giveBack() {
    isLent_ = false;
    for (auto& side : sides_) {
        const auto kept = std::exchange(side.kept, std::nullopt);
        const auto* owned = access_.owned(side.selection);
        if (kept && owned != nullptr && *owned == side.shown) {
            access_.own(side.selection, *kept);
        }
        side.shown = {};
    }
}

void ClipboardLoan::forget(Selection selection) {
    for (auto& side : sides_) {
        if (side.selection == selection) {
            side.kept.reset();
        }
    }
}

} // namespace brenvale
