#pragma once

#include "platform/AccessibilityTrust.h"

namespace brenvale {

class EventPoster;
class InputConsent;

/// Trusted where one of the ways to post events works. Where none does, the user can be asked if the desktop
/// has a dialog for it.
class EventPostingTrust final : public AccessibilityTrust {
public:
    /// `consent` is null where the desktop has nobody to ask. Both live for longer.
    EventPostingTrust(const EventPoster& poster, InputConsent* consent)
        : poster_(poster), consent_(consent) {}

    [[nodiscard]] State state() const override;
    [[nodiscard]] bool isProcessTrusted(bool prompt) override;
    void askUser() override;
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

private:
    const EventPoster& poster_;
    InputConsent* consent_;
};

} // namespace brenvale
