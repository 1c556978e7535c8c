#include "platform/StandardError.h"

#include <QByteArray>

#include <poll.h>
#include <unistd.h>

namespace brenvale {

void complain(QByteArrayView text) {
    pollfd output{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
    if (::poll(&output, 1, 0) != 1 || (output.revents & POLLOUT) == 0) {
        return;
    }
    const auto line = text.toByteArray() + '\n';
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, line.constData(), static_cast<std::size_t>(line.size()));
}

} // namespace brenvale
