#include "platform/linux/StandardOutputLog.h"

#include <QByteArray>

#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace brenvale {

void StandardOutputLog::line(QByteArrayView text) {
    const auto whole = text.toByteArray() + '\n';
    QByteArrayView rest(whole);
    while (!rest.isEmpty()) {
        const auto written = ::write(STDOUT_FILENO, rest.data(), static_cast<std::size_t>(rest.size()));
        if (written > 0) {
            rest = rest.sliced(written);
        } else if (errno == EAGAIN) {
            pollfd output{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
            ::poll(&output, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace brenvale
