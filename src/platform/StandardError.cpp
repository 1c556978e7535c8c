#include "platform/StandardError.h"

#include <QByteArray>

#include <algorithm>

#include <poll.h>
#include <unistd.h>

namespace brenvale {

void complain(QByteArrayView text, std::chrono::milliseconds patience) {
    constexpr qsizetype piece = 512; // what a reader's pipe or terminal takes whole, once it takes anything
    const auto line = text.toByteArray() + '\n';
    for (QByteArrayView rest = line; !rest.isEmpty();) {
        pollfd output{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
        if (::poll(&output, 1, static_cast<int>(patience.count())) != 1 || (output.revents & POLLOUT) == 0) {
            return;
        }
        const auto size = std::min(piece, rest.size());
        const auto written = ::write(STDERR_FILENO, rest.data(), static_cast<std::size_t>(size));
        if (written <= 0) {
            return;
        }
        rest = rest.sliced(written);
    }
}

} // namespace brenvale
