#include "platform/linux/EventPostingTrust.h"

#include <QLoggingCategory>

#include <unistd.h>

namespace brenvale {

namespace {

Q_LOGGING_CATEGORY(input, "brenvale.input")

} // namespace

bool EventPostingTrust::isProcessTrusted(bool prompt) {
    const bool isTrusted = display_.takesEvents || portal_.isStarted() || ::access("/dev/uinput", W_OK) == 0;
    qCDebug(input) << "events can be posted:" << isTrusted;
    if (!isTrusted && prompt && display_.kind == Display::Kind::wayland) {
        portal_.start();
    }
    return isTrusted;
}

} // namespace brenvale
