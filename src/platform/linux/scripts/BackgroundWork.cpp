#include "platform/linux/scripts/BackgroundWork.h"

#include <memory>
#include <system_error>
#include <thread>
#include <utility>

#include <pthread.h>

namespace brenvale {

namespace {

/// Answers once; what comes after that is too late. On main.
class Answer {
public:
    explicit Answer(ScriptDone done) : done_(std::move(done)) {}

    void give(std::optional<QString> error) {
        if (auto done = std::exchange(done_, nullptr)) {
            done(std::move(error));
        }
    }

private:
    ScriptDone done_;
};

} // namespace

void runInBackground(DispatchQueue& main, ScriptWork work, std::chrono::milliseconds patience,
                     QString lateError, ScriptDone done) {
    const auto answer = std::make_shared<Answer>(std::move(done));
    auto run = [&main, work = std::move(work), answer]() mutable {
        pthread_setname_np(pthread_self(), "script");
        main.async([answer, error = work()]() mutable { answer->give(std::move(error)); });
    };
    try {
        std::thread(std::move(run)).detach();
    } catch (const std::system_error& error) {
        // The system has no thread to give: this script fails, and the program goes on.
        main.async([answer, text = QString::fromUtf8(error.what())] { answer->give(text); });
        return;
    }
    main.asyncAfter(patience, [answer, lateError = std::move(lateError)] { answer->give(lateError); });
}

} // namespace brenvale
