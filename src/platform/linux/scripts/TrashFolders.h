#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <sys/types.h>

namespace brenvale {

/// A mounted file system that may hold a trash of its own.
struct TrashMount {
    QByteArray path;
    bool isRemote = false; ///< another machine or another program answers for it, or does not

    friend bool operator==(const TrashMount&, const TrashMount&) = default;
};

/// The writable file systems for files among the mounts that `mountInfo` lists, in the form of
/// /proc/self/mountinfo. Pure.
[[nodiscard]] QList<TrashMount> trashMounts(const QByteArray& mountInfo);

/// Where the user's own trash is.
[[nodiscard]] QByteArray homeTrashPath();

/// What emptying the trash came to.
struct TrashResult {
    qsizetype failures = 0; ///< entries that could not be removed
    QString firstFailure;

    /// Nothing, or the failures as a text.
    [[nodiscard]] std::optional<QString> error() const;
};

/// Empties the trash folder at `path`, laid out as freedesktop.org's trash specification has it (1.0): what
/// is in "files" goes, with its description in "info". Nothing outside the folder is touched; a symbolic link
/// in the place of the folder is refused. A folder that is not there is empty. May wait; any thread.
[[nodiscard]] TrashResult emptyTrashFolder(const QByteArray& path);

/// Empties the trash folders of `user` on the file system that is mounted at `mount`: ".Trash/USER", where
/// ".Trash" is as that specification demands it (no symbolic link, and sticky), and ".Trash-USER". A folder
/// that another user owns is not ours. May wait; any thread.
[[nodiscard]] TrashResult emptyMountTrash(const QByteArray& mount, uid_t user);

} // namespace brenvale
