#pragma once

#include <chrono>

namespace brenvale {

/// How many locations may be opened: ten in one go, and one more each second after. A person opens a page now
/// and then; a phone that asks for ten thousand must not fill the desktop with windows.
class OpeningAllowance {
public:
    using Clock = std::chrono::steady_clock;

    /// Whether one more may be opened at the time `now`, which then counts as opened.
    [[nodiscard]] bool take(Clock::time_point now) {
        constexpr auto atOnce = 10;
        constexpr std::chrono::seconds each{1};
        const auto used = used_ > now ? used_ : now;
        if (used - now > (atOnce - 1) * each) {
            return false;
        }
        used_ = used + each;
        return true;
    }

private:
    Clock::time_point used_; ///< when all that was opened is paid for
};

} // namespace brenvale
