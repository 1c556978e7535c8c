#include "RawTerminal.h"

#include <unistd.h>

namespace brenvale::phone {

RawTerminal::RawTerminal() {
    termios settings{};
    if (::tcgetattr(STDIN_FILENO, &settings) != 0) {
        return;
    }
    before_ = settings;
    settings.c_iflag &= ~static_cast<tcflag_t>(ICRNL | IXON);
    settings.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG | IEXTEN);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    ::tcsetattr(STDIN_FILENO, TCSADRAIN, &settings);
}

RawTerminal::~RawTerminal() {
    if (before_) {
        ::tcsetattr(STDIN_FILENO, TCSADRAIN, &*before_);
    }
}

} // namespace brenvale::phone
