#pragma once

#include "platform/linux/scripts/BackgroundWork.h"

#include <QByteArray>
#include <QSet>

#include <memory>

namespace brenvale {

struct TrashMount;
struct TrashResult;

/// All trash folders of the user: the one of the home folder and those of the mounted file systems. The home
/// folder, the disks of this computer and each remote file system have a thread of their own, which lives as
/// long as there is something to do: one that does not answer keeps nobody else waiting. On main.
class LinuxTrash {
public:
    /// `main` outlives the threads.
    explicit LinuxTrash(DispatchQueue& main) : main_(main) {}

    /// Removes all that is in them, for ever. What can't be removed is told as an error, after the rest is
    /// gone.
    void empty(ScriptDone done);

private:
    struct Emptying;
    using Part = std::move_only_function<TrashResult()>;

    void emptyParts(const QByteArray& mountInfo, ScriptDone done);
    void start(const QByteArray& name, std::chrono::milliseconds patience, Part part,
               const std::shared_ptr<Emptying>& emptying);

    DispatchQueue& main_;
    std::shared_ptr<QSet<QByteArray>> busy_ =
        std::make_shared<QSet<QByteArray>>(); ///< parts whose thread runs
};

} // namespace brenvale
