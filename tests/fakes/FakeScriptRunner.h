#pragma once

#include "platform/ScriptRunner.h"

#include <QStringList>

#include <deque>
#include <optional>

namespace brenvale {

/// Keeps the scripts; each is under way until the test ends it.
class FakeScriptRunner final : public ScriptRunner {
public:
    void execute(const QString& source, Completion completion) override;

    /// Ends the script that began first of those under way, with an error or without.
    void finish(std::optional<QString> error = {});

    [[nodiscard]] bool isIdle() const { return underWay_.empty(); }

    QStringList executed;

private:
    std::deque<Completion> underWay_;
};

} // namespace brenvale
