#pragma once

#include "platform/ScriptRunner.h"

#include <QStringList>

#include <deque>
#include <optional>
#include <utility>

namespace brenvale {

/// Keeps the scripts; each is under way until the test ends it.
class FakeScriptRunner final : public ScriptRunner {
public:
    void execute(const QString& source, Completion completion) override {
        executed.append(source);
        underWay_.push_back(std::move(completion));
    }

    /// Ends the script that began first of those under way, with an error or without.
    void finish(std::optional<QString> error = {}) {
        auto completion = std::move(underWay_.front());
        underWay_.pop_front();
        completion(std::move(error));
    }

    [[nodiscard]] bool isIdle() const { return underWay_.empty(); }

    QStringList executed;

private:
    std::deque<Completion> underWay_;
};

} // namespace brenvale
