#include "platform/linux/ProcessSetup.h"

#include <QLoggingCategory>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace brenvale {

namespace {

// By default the C library raises its limit for separate blocks with each large one that is freed, and keeps
// later ones. These limits let file chunks reuse the heap and return everything larger.
constexpr int separateBlockSize = 4 << 20;
constexpr int keptHeapTop = 8 << 20;

/// A stream that was closed before the start would be the number of the next socket, and take the log's
/// lines.
void openStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0) {
            (void)::open("/dev/null", O_RDWR);
        }
    }
}

} // namespace

void setUpProcess() {
    openStandardStreams();
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    std::signal(SIGPIPE, SIG_IGN);
    // Diagnostics are for who asks for them, by QT_LOGGING_RULES.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false\n*.warning=false"));
    mallopt(M_MMAP_THRESHOLD, separateBlockSize);
    mallopt(M_TRIM_THRESHOLD, keptHeapTop);
}

} // namespace brenvale
