#pragma once

#include <QString>

#include <memory>
#include <string>
#include <vector>

#include <dirent.h>

namespace brenvale {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// An open folder, which its entries are named against: a path that somebody changes meanwhile leads nowhere
/// else. Not inherited by children.
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

/// The folder `name` of `parent`, or null with `errno` where that is no folder, is a symbolic link, or is the
/// top of another mount.
[[nodiscard]] OpenFolder openFolder(int parent, const char* name);

/// The folder at `path`, whose last component is no symbolic link; or null with `errno`.
[[nodiscard]] OpenFolder openFolder(const std::string& path);

/// The next name in `folder` other than "." and "..", until the next call; null at the end.
[[nodiscard]] const char* nextName(DIR* folder);

/// Removes entries of one folder with all that is in them, however deep. Symbolic links are removed, never
/// followed, and other mounts are not entered. What can't be removed stays; the rest goes. One thread.
class TreeRemoval {
public:
    explicit TreeRemoval(int folder) : folder_(folder) {}

    /// True if nothing of the entry `name` is left.
    bool remove(const char* name);

    /// How many entries could not be removed so far, not counting the folders that they stand in.
    [[nodiscard]] qsizetype failures() const { return failures_; }

    /// What was in the way of the first of them; empty where there is none.
    [[nodiscard]] const QString& firstFailure() const { return firstFailure_; }

private:
    /// A folder that is being emptied.
    struct Level {
        OpenFolder folder;
        std::string name;       ///< in the level above it
        bool hasFailed = false; ///< something in it is left
        bool isSecondTurn = false;
    };

    bool removeOne(const char* name);
    bool removeFolder(const char* name);
    bool enter(int parent, const char* name);
    void step();
    void leave();
    bool moveUp(int parent, const char* name);
    void fail(const char* name, int error);

    int folder_;
    std::vector<Level> levels_;
    std::vector<std::string> movedUp_; ///< folders of deep inside that wait in `folder_` for their turn
    int moves_ = 0;
    bool hasFailed_ = false; ///< something of the entry at hand is left
    qsizetype failures_ = 0;
    QString firstFailure_;
};

} // namespace brenvale
