#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"

#include <array>
#include <optional>
#include <vector>

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

    /// Gives back what was there, and lends nothing any more: what comes then is never answered.
    void end();
    [[nodiscard]] bool hasEnded() const { return state_ == State::ended; }

    /// While a loan stands: `contents` are to be on the selection when it has ended. False where none stands.
    bool holdBack(Selection selection, const ClipboardContents& contents);

private:
    /// What happens with one selection.
    struct Side {
        Selection selection;
        std::optional<ClipboardContents> kept;
        ClipboardContents shown;
        bool isHeldBack = false; ///< `kept` is newer than the loan
    };

    struct Waiting {
        QString text;
        std::move_only_function<void()> lent;
    };

    enum class State : quint8 { none, keeping, lent, ended };

    void keep(std::size_t number);
    void take(const QString& text);

    SelectionAccess& access_;
    std::array<Side, 2> sides_{Side{.selection = Selection::clipboard},
                               Side{.selection = Selection::primary}};
    State state_ = State::none;
    std::vector<Waiting> waiting_; ///< while what the user has is being kept
    bool endsAtOnce_ = false;      ///< given back before it stood
};

} // namespace brenvale
