#include "platform/linux/scripts/LinuxTrash.h"

#include "platform/linux/scripts/TrashFolders.h"

#include <QFile>
#include <QStringList>

#include <utility>

#include <unistd.h>

namespace brenvale {

namespace {

using namespace std::chrono_literals;

// A hundred thousand files take seconds. Who waits longer than this is told that it goes on.
constexpr auto patienceForDisks = 60s;
constexpr auto patienceForRemotes = 5s;

TrashResult emptyAll(const QList<TrashMount>& mounts) {
    TrashResult sum;
    for (const auto& mount : mounts) {
        const auto result = emptyMountTrash(mount.path, getuid());
        if (sum.failures == 0) {
            sum.firstFailure = result.firstFailure;
        }
        sum.failures += result.failures;
    }
    return sum;
}

QString stillEmptying(const QByteArray& part) {
    return QStringLiteral("The Trash (%1) is still being emptied, or does not answer.")
        .arg(QFile::decodeName(part));
}

} // namespace

/// One emptying of all parts, until the last of them has answered.
struct LinuxTrash::Emptying {
    ScriptDone done;
    QStringList errors;

    explicit Emptying(ScriptDone whenDone) : done(std::move(whenDone)) {}
    Emptying(const Emptying&) = delete;
    Emptying& operator=(const Emptying&) = delete;
    Emptying(Emptying&&) = delete;
    Emptying& operator=(Emptying&&) = delete;
    ~Emptying() { done(errors.isEmpty() ? std::nullopt : std::optional(errors.join(u' '))); }
};

void LinuxTrash::empty(ScriptDone done) {
    // What is mounted can't be read while the kernel mounts something that does not answer.
    auto mountInfo = std::make_shared<QByteArray>();
    auto read = [mountInfo]() -> std::optional<QString> {
        QFile file(QStringLiteral("/proc/self/mountinfo"));
        if (!file.open(QIODevice::ReadOnly)) {
            return QStringLiteral("The mounted disks are not known: %1").arg(file.errorString());
        }
        *mountInfo = file.readAll();
        return {};
    };
    runInBackground(main_, std::move(read), patienceForRemotes,
                    QStringLiteral("The system does not tell which disks are mounted."),
                    [this, mountInfo, done = std::move(done)](const std::optional<QString>& error) mutable {
                        if (error) {
                            done(error);
                        } else {
                            emptyParts(*mountInfo, std::move(done));
                        }
                    });
}

void LinuxTrash::emptyParts(const QByteArray& mountInfo, ScriptDone done) {
    const auto emptying = std::make_shared<Emptying>(std::move(done));
    const auto home = homeTrashPath();
    start(home, patienceForDisks, [home] { return emptyTrashFolder(home); }, emptying);
    QList<TrashMount> disks;
    for (const auto& mount : trashMounts(mountInfo)) {
        if (mount.isRemote) {
            start(mount.path, patienceForRemotes, [mount] { return emptyAll({mount}); }, emptying);
        } else {
            disks.append(mount);
        }
    }
    start("the disks", patienceForDisks, [disks] { return emptyAll(disks); }, emptying);
}

void LinuxTrash::start(const QByteArray& name, std::chrono::milliseconds patience, Part part,
                       const std::shared_ptr<Emptying>& emptying) {
    if (busy_->contains(name)) {
        emptying->errors.append(stillEmptying(name));
        return;
    }
    busy_->insert(name);
    // The thread may end long after it was given up, and only then may another one start.
    auto work = [&main = main_, busy = busy_, name, part = std::move(part)]() mutable {
        auto error = part().error();
        main.async([busy, name] { busy->remove(name); });
        return error;
    };
    runInBackground(main_, std::move(work), patience, stillEmptying(name),
                    [emptying](const std::optional<QString>& error) {
                        if (error) {
                            emptying->errors.append(*error);
                        }
                    });
}

} // namespace brenvale
