#pragma once

#include "platform/Script.h"
#include "platform/ScriptRunner.h"
#include "platform/linux/ChildPrograms.h"
#include "platform/linux/scripts/LinuxTrash.h"
#include "platform/linux/scripts/OpeningAllowance.h"

#include <deque>
#include <utility>

namespace brenvale {

/// Scripts by the services of the desktop: the sound server, the default programs, the trash folders, logind
/// and the screen saver. What may wait for something runs on a thread of its own or as a call on the bus, for
/// a limited time; nothing runs and no connection stays open between scripts. On main.
class LinuxScriptRunner final : public ScriptRunner {
public:
    /// `main` outlives the threads.
    explicit LinuxScriptRunner(DispatchQueue& main, ChildPrograms programs = ChildPrograms())
        : main_(main), programs_(std::move(programs)), trash_(main) {}

    void execute(const QString& source, Completion completion) override;

private:
    struct Waiting {
        Script script;
        Completion completion;
    };

    void refuse(const QString& error, Completion completion);
    void runNext();
    void ended(std::optional<QString> error);
    void perform(const Script& script);

    DispatchQueue& main_;
    ChildPrograms programs_;
    LinuxTrash trash_;
    OpeningAllowance openings_;
    std::deque<Waiting> scripts_; ///< the first of them is under way
};

} // namespace brenvale
