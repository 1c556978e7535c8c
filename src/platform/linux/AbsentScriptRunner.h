#pragma once

#include "platform/DispatchQueue.h"
#include "platform/ScriptRunner.h"

namespace brenvale {

/// Performs no script: each is answered with an error.
class AbsentScriptRunner final : public ScriptRunner {
public:
    explicit AbsentScriptRunner(DispatchQueue& main) : main_(main) {}

    void execute(const QString& /*source*/, Completion completion) override {
        main_.async([completion = std::move(completion)]() mutable {
            completion(QStringLiteral("This desktop performs no scripts."));
        });
    }

private:
    DispatchQueue& main_;
};

} // namespace brenvale
