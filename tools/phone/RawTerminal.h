#pragma once

#include <termios.h>

#include <optional>

namespace brenvale::phone {

/// While it lives, the terminal of standard input hands over each key at once and shows none. Where there is
/// no terminal it does nothing. One thread.
class RawTerminal {
public:
    RawTerminal();
    ~RawTerminal();
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

private:
    std::optional<termios> before_;
};

} // namespace brenvale::phone
