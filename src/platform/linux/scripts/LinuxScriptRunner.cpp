#include "platform/linux/scripts/LinuxScriptRunner.h"

#include "platform/linux/scripts/LocationOpening.h"
#include "platform/linux/scripts/LoginSession.h"
#include "platform/linux/scripts/PulseVolume.h"

#include <utility>

namespace brenvale {

namespace {

using namespace std::chrono_literals;

/// More than a finger on a volume key brings about, whatever holds the first of them up.
constexpr std::size_t mostWaiting = 100;

constexpr auto patienceForSound = 3s;
/// The library asks servers and reads files of its own before our patience counts.
constexpr auto patienceForSoundLibrary = 5s;
constexpr auto patienceForOpening = 5s;

template <typename... Performers>
struct Overloaded : Performers... {
    using Performers::operator()...;
};

} // namespace

void LinuxScriptRunner::execute(const QString& source, Completion completion) {
    auto script = readScript(source);
    if (!script) {
        refuse(script.error(), std::move(completion));
        return;
    }
    if (scripts_.size() >= mostWaiting) {
        refuse(QStringLiteral("Too many scripts are waiting."), std::move(completion));
        return;
    }
    if (std::holds_alternative<OpenLocation>(*script) && !openings_.take(OpeningAllowance::Clock::now())) {
        refuse(QStringLiteral("Too many locations were opened just now."), std::move(completion));
        return;
    }
    scripts_.push_back({.script = *std::move(script), .completion = std::move(completion)});
    if (scripts_.size() == 1) {
        main_.async([this] { runNext(); });
    }
}

void LinuxScriptRunner::refuse(const QString& error, Completion completion) {
    main_.async([error, completion = std::move(completion)]() mutable { completion(error); });
}

void LinuxScriptRunner::runNext() {
    const auto script = scripts_.front().script;
    perform(script);
}

void LinuxScriptRunner::ended(std::optional<QString> error) {
    auto completion = std::move(scripts_.front().completion);
    scripts_.pop_front();
    if (!scripts_.empty()) {
        main_.async([this] { runNext(); });
    }
    completion(std::move(error));
}

void LinuxScriptRunner::perform(const Script& script) {
    const auto done = [this](std::optional<QString> error) {
        ended(std::move(error));
    };
    std::visit(
        Overloaded{
            [&](const ChangeOutputVolume& change) {
                runInBackground(
                    main_, [change] { return changeOutputVolume(change.difference, patienceForSound); },
                    patienceForSoundLibrary, QStringLiteral("The sound server does not answer."), done);
            },
            [&](const OpenLocation& open) {
                runInBackground(
                    main_, [open, programs = programs_] { return openLocation(open.location, programs); },
                    patienceForOpening, QStringLiteral("The program that opens the location does not start."),
                    done);
            },
            [&](const EmptyTrash&) { trash_.empty(done); },
            [&](const LockScreen&) { lockScreen(done); },
            [&](const Sleep&) { sleepComputer(done); },
        },
        script);
}

} // namespace brenvale
