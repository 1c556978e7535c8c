#include "platform/linux/scripts/TrashFolders.h"

#include "platform/linux/scripts/TreeRemoval.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr std::array localTypes{"bcachefs", "btrfs",   "exfat", "ext2",  "ext3",   "ext4", "f2fs",  "fuseblk",
                                "hfs",      "hfsplus", "jfs",   "msdos", "nilfs2", "ntfs", "ntfs3", "overlay",
                                "reiserfs", "tmpfs",   "ubifs", "udf",   "vfat",   "xfs",  "zfs"};
constexpr std::array remoteTypes{"9p",     "afs", "ceph", "cifs",  "coda",     "fuse", "gfs2",  "glusterfs",
                                 "lustre", "nfs", "nfs4", "ocfs2", "orangefs", "smb3", "smbfs", "virtiofs"};
// Programs that show what is elsewhere already; nobody has a trash at their top.
constexpr std::array viewTypes{"fuse.gvfsd-fuse", "fuse.lxcfs", "fuse.portal"};

template <std::size_t count>
bool contains(const std::array<const char*, count>& types, const QByteArray& type) {
    return std::ranges::any_of(types, [&](const char* known) { return type == known; });
}

/// The kernel writes spaces and the like in octal.
QByteArray withoutOctals(const QByteArray& text) {
    QByteArray plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool isNumber = false;
        const auto code = text[i] == '\\' ? text.mid(i + 1, 3).toUShort(&isNumber, 8) : ushort{0};
        if (isNumber) {
            plain.append(static_cast<char>(code));
            i += 3;
        } else {
            plain.append(text[i]);
        }
    }
    return plain;
}

bool isWritable(const QByteArray& options) {
    return !options.split(',').contains("ro");
}

std::optional<TrashMount> trashMount(const QByteArray& line) {
    // Number, parent, device, root, place, options, any number of tags, "-", type, source, more options.
    const auto fields = line.split(' ');
    constexpr qsizetype place = 4;
    constexpr qsizetype options = 5;
    const auto end = fields.indexOf("-", options + 1);
    if (end < 0 || fields.size() < end + 4 || !isWritable(fields[options]) || !isWritable(fields[end + 3])) {
        return {};
    }
    const auto& type = fields[end + 1];
    const bool isRemote = contains(remoteTypes, type) || type.startsWith("fuse.");
    if (contains(viewTypes, type) || (!isRemote && !contains(localTypes, type))) {
        return {};
    }
    return TrashMount{.path = withoutOctals(fields[place]), .isRemote = isRemote};
}

TrashResult failure(const QByteArray& path, int error) {
    return {.failures = 1,
            .firstFailure = QStringLiteral("%1: %2").arg(QFile::decodeName(path), qt_error_string(error))};
}

void add(TrashResult& sum, const TrashResult& more) {
    if (sum.failures == 0) {
        sum.firstFailure = more.firstFailure;
    }
    sum.failures += more.failures;
}

constexpr auto descriptionEnding = ".trashinfo";

/// Removes the descriptions of what is gone. One that came since `begin` is of something that is only just
/// being put into the trash.
void removeDescriptions(int files, DIR* info, const timespec& begin) {
    while (const auto* entry = nextName(info)) {
        const QByteArray name(entry);
        struct stat status{};
        if (!name.endsWith(descriptionEnding) ||
            fstatat(files, name.chopped(static_cast<qsizetype>(qstrlen(descriptionEnding))), &status,
                    AT_SYMLINK_NOFOLLOW) == 0 ||
            fstatat(dirfd(info), name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            continue;
        }
        const auto isOlder = [](const timespec& one, const timespec& other) {
            return one.tv_sec != other.tv_sec ? one.tv_sec < other.tv_sec : one.tv_nsec <= other.tv_nsec;
        };
        if (isOlder(status.st_ctim, begin)) {
            unlinkat(dirfd(info), name, 0);
        }
    }
}

/// Removes what is in `files`, and the description of each thing in `info`, which may be null.
void removeFiles(DIR* files, DIR* info, TreeRemoval& removal) {
    while (const auto* entry = nextName(files)) {
        const QByteArray name(entry);
        // First the file: a description without one misleads nobody, a file without one can't be put back.
        if (removal.remove(name) && info != nullptr) {
            unlinkat(dirfd(info), name + descriptionEnding, 0);
        }
    }
}

TrashResult emptyOpenTrash(const OpenFolder& trash, const QByteArray& path) {
    timespec begin{};
    clock_gettime(CLOCK_REALTIME, &begin);
    const int folder = dirfd(trash.get());
    const auto files = openFolder(folder, "files");
    if (!files) {
        return errno == ENOENT ? TrashResult{} : failure(path + "/files", errno);
    }
    const auto info = openFolder(folder, "info");
    TreeRemoval removal(dirfd(files.get()));
    // Some file systems pass names over while others go: the second turn takes what was left.
    for (int turn = 0; turn < 2 && removal.failures() == 0; ++turn) {
        rewinddir(files.get());
        removeFiles(files.get(), info.get(), removal);
    }
    if (info) {
        removeDescriptions(dirfd(files.get()), info.get(), begin);
    }
    unlinkat(folder, "directorysizes", 0); // known sizes of folders that are gone; made anew when needed
    return {.failures = removal.failures(), .firstFailure = removal.firstFailure()};
}

/// The status of `folder`, or nothing where it is another user's.
bool isOwnedBy(uid_t user, DIR* folder) {
    struct stat status{};
    return fstat(dirfd(folder), &status) == 0 && status.st_uid == user;
}

/// Empties the trash `name` of `parent` if it is there and the user's own.
TrashResult emptyOwnTrash(int parent, const QByteArray& name, const QByteArray& path, uid_t user) {
    const auto trash = openFolder(parent, name);
    if (!trash) {
        const int error = errno;
        struct stat status{};
        // No folder, a link or a mount in its place, and another user's folder are no trash of ours.
        const bool isOurs = error != ENOENT && error != EXDEV &&
                            fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                            S_ISDIR(status.st_mode) && status.st_uid == user;
        return isOurs || error == EIO ? failure(path, error) : TrashResult{};
    }
    return isOwnedBy(user, trash.get()) ? emptyOpenTrash(trash, path) : TrashResult{};
}

} // namespace

QList<TrashMount> trashMounts(const QByteArray& mountInfo) {
    QList<TrashMount> mounts;
    for (const auto& line : mountInfo.split('\n')) {
        if (auto mount = trashMount(line); mount && !mounts.contains(*mount)) {
            mounts.append(*std::move(mount));
        }
    }
    return mounts;
}

QByteArray homeTrashPath() {
    return QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                             QStringLiteral("/Trash"));
}

std::optional<QString> TrashResult::error() const {
    if (failures == 0) {
        return {};
    }
    return failures == 1 ? firstFailure
                         : QStringLiteral("%1 (and %2 more)").arg(firstFailure).arg(failures - 1);
}

TrashResult emptyTrashFolder(const QByteArray& path) {
    const auto trash = openFolder(path.toStdString());
    if (!trash) {
        return errno == ENOENT ? TrashResult{} : failure(path, errno);
    }
    return emptyOpenTrash(trash, path);
}

TrashResult emptyMountTrash(const QByteArray& mount, uid_t user) {
    const auto top = openFolder(mount.toStdString());
    if (!top) {
        return {}; // a mount of one file, or one that the user may not read
    }
    TrashResult result;
    const auto number = QByteArray::number(user);
    struct stat status{};
    const auto shared = openFolder(dirfd(top.get()), ".Trash");
    if (shared && fstat(dirfd(shared.get()), &status) == 0 && (status.st_mode & S_ISVTX) != 0) {
        add(result, emptyOwnTrash(dirfd(shared.get()), number, mount + "/.Trash/" + number, user));
    }
    const auto own = ".Trash-" + number;
    add(result, emptyOwnTrash(dirfd(top.get()), own, mount + '/' + own, user));
    return result;
}

} // namespace brenvale
