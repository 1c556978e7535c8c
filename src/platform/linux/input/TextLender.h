#pragma once

#include <QString>

#include <functional>

namespace brenvale {

/// Lends a text to the desktop's clipboard for as long as it takes to paste it. Any thread, never blocks;
/// answers come on main.
class TextLender {
public:
    virtual ~TextLender() = default;

    /// Puts `text` where programs paste from, keeps what the user has there, and calls `lent` once a program
    /// that pastes gets it: with false where that cannot be had. While a text is lent the next one takes its
    /// place alone.
    virtual void lend(const QString& text, std::move_only_function<void(bool)> lent) = 0;

    /// Gives back what the user had, save where a program has taken the clipboard meanwhile.
    virtual void giveBack() = 0;
};

} // namespace brenvale
