#include "fakes/FakeScriptRunner.h"

#include <utility>

namespace brenvale {

void FakeScriptRunner::execute(const QString& source, Completion completion) {
    executed.append(source);
    underWay_.push_back(std::move(completion));
}

void FakeScriptRunner::finish(std::optional<QString> error) {
    auto completion = std::move(underWay_.front());
    underWay_.pop_front();
    completion(std::move(error));
}

} // namespace brenvale
