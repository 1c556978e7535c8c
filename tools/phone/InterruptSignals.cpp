#include "InterruptSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace brenvale::phone {
namespace {

sigset_t interrupts() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

} // namespace

InterruptSignals::InterruptSignals(std::function<void()> onInterrupt) : descriptor_(-1) {
    const sigset_t set = interrupts();
    descriptor_ = ::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) {
        return; // the signals then end the program by themselves
    }
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this, interrupted = std::move(onInterrupt)] {
                         signalfd_siginfo info{};
                         if (::read(descriptor_, &info, sizeof info) > 0) {
                             interrupted();
                         }
                     });
}

InterruptSignals::~InterruptSignals() {
    notifier_.reset();
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace brenvale::phone
