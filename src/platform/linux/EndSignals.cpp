#include "platform/linux/EndSignals.h"

#include "platform/LastSteps.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr std::array endSignals{SIGTERM, SIGINT, SIGHUP};

// A handler of a signal can reach nothing else.
int toThread = -1; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void tellThread(int number) {
    const auto earlier = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto written = ::write(toThread, &byte, sizeof byte);
    errno = earlier;
}

void waitForSignal(int fromHandler) {
    ::pthread_setname_np(::pthread_self(), "end signals");
    unsigned char number = 0;
    while (::read(fromHandler, &number, sizeof number) < 0 && errno == EINTR) {
    }
    runLastSteps();
    (void)std::signal(number, SIG_DFL);
    (void)::kill(::getpid(), number);
}

bool isIgnored(int number) {
    struct sigaction present{};
    return ::sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

} // namespace

void runLastStepsBeforeEndSignals() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    toThread = ends[1];
    std::thread(waitForSignal, ends[0]).detach();
    struct sigaction action{};
    action.sa_handler = tellThread;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int number : endSignals) {
        if (!isIgnored(number)) {
            (void)::sigaction(number, &action, nullptr);
        }
    }
}

} // namespace brenvale
