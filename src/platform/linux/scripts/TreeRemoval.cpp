#include "platform/linux/scripts/TreeRemoval.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace brenvale {

namespace {

/// So many folders are open at a time; what is deeper is moved up first.
constexpr std::size_t deepest = 64;

// A FIFO in the place of a folder is refused and not waited for.
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

OpenFolder readable(int descriptor) {
    if (descriptor < 0) {
        return nullptr;
    }
    OpenFolder folder(fdopendir(descriptor));
    if (!folder) {
        const int error = errno;
        close(descriptor);
        errno = error;
    }
    return folder;
}

/// The mount that the file of a descriptor is on; where the kernel does not tell, its file system.
std::array<std::uint64_t, 3> mountOf(int descriptor) {
    struct statx status{};
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) {
        return {};
    }
    if ((status.stx_mask & STATX_MNT_ID) != 0) {
        return {status.stx_mnt_id, 0, 0};
    }
    return {0, status.stx_dev_major, status.stx_dev_minor};
}

/// For kernels and containers without openat2: opens first and looks then.
int openOnSameMount(int parent, const char* name) {
    const int descriptor = openat(parent, name, folderFlags);
    if (descriptor >= 0 && mountOf(descriptor) != mountOf(parent)) {
        close(descriptor);
        errno = EXDEV;
        return -1;
    }
    return descriptor;
}

} // namespace

OpenFolder openFolder(int parent, const char* name) {
    open_how how{};
    how.flags = folderFlags;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_XDEV;
    // The C library has no function for it.
    const auto descriptor = static_cast<int>(syscall(SYS_openat2, parent, name, &how, sizeof how));
    if (descriptor < 0 && (errno == ENOSYS || errno == EPERM)) {
        return readable(openOnSameMount(parent, name));
    }
    return readable(descriptor);
}

OpenFolder openFolder(const std::string& path) {
    return readable(open(path.c_str(), folderFlags));
}

const char* nextName(DIR* folder) {
    while (const auto* entry = readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            return entry->d_name;
        }
    }
    return nullptr;
}

bool TreeRemoval::remove(const char* name) {
    hasFailed_ = false;
    bool isRemoved = removeOne(name);
    while (!movedUp_.empty()) {
        const auto next = std::move(movedUp_.back());
        movedUp_.pop_back();
        isRemoved = removeOne(next.c_str()) && isRemoved;
    }
    return isRemoved && !hasFailed_;
}

bool TreeRemoval::removeOne(const char* name) {
    if (unlinkat(folder_, name, 0) == 0 || errno == ENOENT) {
        return true;
    }
    if (errno == EISDIR) {
        return removeFolder(name);
    }
    fail(name, errno);
    return false;
}

bool TreeRemoval::removeFolder(const char* name) {
    if (!enter(folder_, name)) {
        return false;
    }
    while (!levels_.empty()) {
        step();
    }
    return !hasFailed_;
}

/// Begins to empty the folder `name` of `parent`.
bool TreeRemoval::enter(int parent, const char* name) {
    auto folder = openFolder(parent, name);
    if (!folder) {
        if (errno == ENOENT) {
            return true;
        }
        fail(name, errno);
        return false;
    }
    levels_.push_back({.folder = std::move(folder), .name = name});
    return true;
}

/// Removes the next entry of the folder at hand, or that folder where it has none.
void TreeRemoval::step() {
    const auto* name = nextName(levels_.back().folder.get());
    if (name == nullptr) {
        leave();
        return;
    }
    const int parent = dirfd(levels_.back().folder.get());
    if (unlinkat(parent, name, 0) == 0 || errno == ENOENT) {
        return;
    }
    const std::size_t level = levels_.size() - 1;
    if (errno != EISDIR) {
        fail(name, errno);
        levels_[level].hasFailed = true;
    } else if (levels_.size() < deepest ? !enter(parent, name) : !moveUp(parent, name)) {
        levels_[level].hasFailed = true;
    }
}

/// Removes the folder at hand, which is empty unless something in it could not be removed or came meanwhile.
void TreeRemoval::leave() {
    auto level = std::move(levels_.back());
    levels_.pop_back();
    const int parent = levels_.empty() ? folder_ : dirfd(levels_.back().folder.get());
    if (unlinkat(parent, level.name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) {
        return;
    }
    const int error = errno;
    if (error == ENOTEMPTY && !level.hasFailed && !level.isSecondTurn) {
        // Some file systems pass names over while others go. One more turn and no third: a program that
        // fills the folder all the while would never let it end.
        level.isSecondTurn = true;
        rewinddir(level.folder.get());
        levels_.push_back(std::move(level));
        return;
    }
    if (!level.hasFailed) {
        fail(level.name.c_str(), error);
    }
    if (!levels_.empty()) {
        levels_.back().hasFailed = true;
    }
}

/// Has the folder `name` of deep inside wait at the top, so that the depth of a tree costs no descriptors.
bool TreeRemoval::moveUp(int parent, const char* name) {
    auto place = ".brenvale-" + std::to_string(getpid()) + '-' + std::to_string(++moves_);
    if (renameat(parent, name, folder_, place.c_str()) != 0) {
        fail(name, errno);
        return false;
    }
    movedUp_.push_back(std::move(place));
    return true;
}

void TreeRemoval::fail(const char* name, int error) {
    hasFailed_ = true;
    if (failures_++ == 0) {
        firstFailure_ = QStringLiteral("\"%1\" can't be deleted: %2")
                            .arg(QFile::decodeName(name), qt_error_string(error));
    }
}

} // namespace brenvale
