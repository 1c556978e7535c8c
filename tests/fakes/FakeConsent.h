#pragma once

#include "platform/linux/input/InputConsent.h"

#include <functional>
#include <variant>
#include <vector>

namespace brenvale {

/// A dialog that nobody answers, until the test tells otherwise.
class FakeConsent final : public InputConsent {
public:
    [[nodiscard]] bool canAsk() const override { return hasDialog; }
    [[nodiscard]] bool hasNobodyToAsk() const override { return isNone; }
    void ask(Occasion occasion) override { asked.push_back(occasion); }
    [[nodiscard]] Subscription observe(std::function<void()> observer) override {
        return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
    }

    void tellOfAChange() { change_.set({}); }

    bool hasDialog = true;
    bool isNone = false; ///< for certain
    std::vector<Occasion> asked;

private:
    Published<std::monostate> change_;
};

} // namespace brenvale
