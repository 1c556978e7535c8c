#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"

#include <array>
#include <optional>

namespace brenvale {

/// Puts a text on both selections for a moment, so that it can be pasted into another program, and gives them
/// back what the user had there. On the clipboard's thread.
class ClipboardLoan {
public:
    /// `access` outlives this.
    explicit ClipboardLoan(SelectionAccess& access) : access_(access) {}

    /// Keeps what the user has and takes both selections over with `text`, then calls `lent`. While a loan
    /// stands the next one replaces its text alone.
    void lend(const QString& text, std::move_only_function<void()> lent);

    /// Gives back what was there, where nobody has taken the selection meanwhile.
    void giveBack();

    /// Something else is to be on the selection from now on: what was there is forgotten.
    void forget(Selection selection);

private:
    /// What happens with one selection.
    struct Side {
        Selection selection;
        std::optional<ClipboardContents> kept;
        ClipboardContents shown;
    };

    void keep(std::size_t number, std::move_only_function<void()> kept);
    void take(const QString& text);

    SelectionAccess& access_;
    std::array<Side, 2> sides_{Side{.selection = Selection::clipboard},
                               Side{.selection = Selection::primary}};
    bool isLent_ = false;
};

} // namespace brenvale
