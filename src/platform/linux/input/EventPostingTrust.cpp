#include "platform/linux/input/EventPostingTrust.h"

#include "platform/EventPoster.h"
#include "platform/linux/input/InputConsent.h"

#include <QLoggingCategory>

namespace brenvale {

namespace {

Q_LOGGING_CATEGORY(input, "brenvale.input")

} // namespace

AccessibilityTrust::State EventPostingTrust::state() const {
    if (poster_.canMakeEvents()) {
        return State::trusted;
    }
    return consent_ != nullptr && consent_->canAsk() ? State::toBeAsked : State::impossible;
}

bool EventPostingTrust::isProcessTrusted(bool prompt) {
    const bool isTrusted = state() == State::trusted;
    if (prompt) {
        qCDebug(input) << "events can be posted:" << isTrusted;
        if (!isTrusted && consent_ != nullptr) {
            consent_->ask(InputConsent::Occasion::start);
        }
    }
    return isTrusted;
}

void EventPostingTrust::askUser() {
    if (consent_ != nullptr && state() == State::toBeAsked) {
        consent_->ask(InputConsent::Occasion::usersWish);
    }
}

Subscription EventPostingTrust::observe(std::function<void()> observer) {
    if (consent_ != nullptr) {
        return consent_->observe(std::move(observer));
    }
    observer();
    return nullptr;
}

} // namespace brenvale
