#include "platform/linux/scripts/TrashFolders.h"

#include "platform/linux/scripts/TreeRemoval.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brenvale;
namespace fs = std::filesystem;

namespace {

void write(const fs::path& path, const std::string& text = "x") {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

/// A folder of its own below the temporary ones, gone afterwards.
struct TrashTest : testing::Test {
    TrashTest() {
        std::string name = (fs::temp_directory_path() / "trash-test.XXXXXX").string();
        root = mkdtemp(name.data());
        trash = root / "Trash";
    }
    TrashTest(const TrashTest&) = delete;
    TrashTest& operator=(const TrashTest&) = delete;
    TrashTest(TrashTest&&) = delete;
    TrashTest& operator=(TrashTest&&) = delete;
    ~TrashTest() override { fs::remove_all(root); }

    /// A trash folder at `place` with a file and a folder in it.
    static void fill(const fs::path& place) {
        write(place / "files/note.txt");
        write(place / "info/note.txt.trashinfo", "[Trash Info]\nPath=/note.txt\n");
        write(place / "files/photos/2024/a.jpg");
        write(place / "info/photos.trashinfo", "[Trash Info]\nPath=/photos\n");
        write(place / "directorysizes", "1 2 photos\n");
    }

    static std::size_t entries(const fs::path& folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
    }

    static bool isEmptied(const fs::path& place) {
        return entries(place / "files") == 0 && entries(place / "info") == 0 &&
               !fs::exists(place / "directorysizes");
    }

    [[nodiscard]] TrashResult empty() const { return emptyTrashFolder(trash.c_str()); }

    fs::path root;
    fs::path trash;
};

} // namespace

TEST_F(TrashTest, EverythingInItGoes) {
    fill(trash);
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_TRUE(isEmptied(trash));
}

TEST_F(TrashTest, WhatIsNotThereIsEmpty) {
    EXPECT_EQ(empty().error(), std::nullopt);
    fs::create_directories(trash / "files");
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_FALSE(fs::exists(trash / "info"));
}

TEST_F(TrashTest, AllKindsOfFilesGo) {
    fs::create_directories(trash / "files/folder");
    ASSERT_EQ(mkfifo((trash / "files/fifo").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((trash / "files/folder/fifo").c_str(), 0600), 0);
    write(trash / "files/a\nb \\ \xff\xfe");
    write(trash / "files/-rf");
    write(trash / "files/.hidden/.more");
    write(trash / "files/read only");
    fs::permissions(trash / "files/read only", fs::perms::none);
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_EQ(entries(trash / "files"), 0U);
}

TEST_F(TrashTest, SymbolicLinksGoAndWhatTheyPointAtStays) {
    fill(trash);
    write(root / "outside/kept");
    fs::create_directory_symlink(root / "outside", trash / "files/link");
    fs::create_directory_symlink(root / "outside", trash / "files/photos/link");
    fs::create_symlink(root / "outside/kept", trash / "files/photos/file link");
    fs::create_symlink(root / "nowhere", trash / "files/broken");
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_TRUE(isEmptied(trash));
    EXPECT_TRUE(fs::exists(root / "outside/kept"));
}

TEST_F(TrashTest, ALinkInThePlaceOfAFolderOfTheTrashIsNotFollowed) {
    for (const std::string place : {"", "files", "info"}) {
        fs::remove_all(trash);
        fill(trash);
        fs::remove_all(root / "outside");
        fill(root / "outside");
        write(root / "outside/kept");
        const auto link = place.empty() ? trash : trash / place;
        fs::remove_all(link);
        fs::create_directory_symlink(root / "outside", link);
        const auto result = empty();
        EXPECT_TRUE(fs::exists(root / "outside/kept")) << place;
        EXPECT_TRUE(fs::exists(root / "outside/files/note.txt")) << place;
        EXPECT_TRUE(fs::exists(root / "outside/info/note.txt.trashinfo")) << place;
        EXPECT_EQ(result.failures, place == "info" ? 0 : 1) << place;
        EXPECT_TRUE(fs::is_symlink(link)) << place;
    }
}

TEST_F(TrashTest, AFifoInThePlaceOfAFolderOfTheTrashIsNotWaitedFor) {
    fs::create_directories(trash);
    ASSERT_EQ(mkfifo((trash / "files").c_str(), 0600), 0);
    EXPECT_EQ(empty().failures, 1);
    fs::remove_all(trash);
    ASSERT_EQ(mkfifo(trash.c_str(), 0600), 0);
    EXPECT_EQ(empty().failures, 1);
}

TEST_F(TrashTest, TreesMayBeDeeperThanDescriptorsAndPathsReach) {
    constexpr int depth = 2'100;
    fs::create_directories(trash / "files");
    int folder = open((trash / "files").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(mkdirat(folder, "d", 0700), 0);
        const int file = openat(folder, "f", O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_GE(file, 0);
        close(file);
        const int next = openat(folder, "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(next, 0);
        close(folder);
        folder = next;
    }
    close(folder);
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_EQ(entries(trash / "files"), 0U);
}

TEST_F(TrashTest, ManyFilesGo) {
    constexpr int count = 2'000;
    fs::create_directories(trash / "files/folder");
    fs::create_directories(trash / "info");
    const auto create = [](const fs::path& path) {
        close(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    };
    for (int i = 0; i < count; ++i) {
        create(trash / "files" / std::to_string(i));
        create(trash / "info" / (std::to_string(i) + ".trashinfo"));
        create(trash / "files/folder" / std::to_string(i));
    }
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_TRUE(isEmptied(trash));
}

TEST_F(TrashTest, DescriptionsWithoutAFileGoAndOtherFilesBesideThemStay) {
    write(trash / "info/gone.trashinfo");
    write(trash / "info/kept");
    fs::create_directories(trash / "files");
    EXPECT_EQ(empty().error(), std::nullopt);
    EXPECT_FALSE(fs::exists(trash / "info/gone.trashinfo"));
    EXPECT_TRUE(fs::exists(trash / "info/kept"));
}

TEST_F(TrashTest, WhatCantBeRemovedIsToldAndStaysWithItsDescription) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may remove everything";
    }
    fill(trash);
    fs::permissions(trash / "files/photos/2024", fs::perms::owner_read | fs::perms::owner_exec);
    const auto result = empty();
    EXPECT_EQ(result.failures, 1);
    EXPECT_EQ(*result.error(), QStringLiteral("\"a.jpg\" can't be deleted: Permission denied"));
    EXPECT_FALSE(fs::exists(trash / "files/note.txt"));
    EXPECT_FALSE(fs::exists(trash / "info/note.txt.trashinfo"));
    EXPECT_TRUE(fs::exists(trash / "info/photos.trashinfo"));
    fs::permissions(trash / "files/photos/2024", fs::perms::owner_all);
}

TEST_F(TrashTest, AMountsOwnTrashIsEmptied) {
    fill(root / (".Trash-" + std::to_string(getuid())));
    EXPECT_EQ(emptyMountTrash(root.c_str(), getuid()).error(), std::nullopt);
    EXPECT_TRUE(isEmptied(root / (".Trash-" + std::to_string(getuid()))));
}

TEST_F(TrashTest, AMountsSharedTrashIsEmptiedWhereItIsSticky) {
    const auto own = root / ".Trash" / std::to_string(getuid());
    fill(own);
    const auto others = root / ".Trash" / std::to_string(getuid() + 1);
    write(others / "files/kept");
    EXPECT_EQ(emptyMountTrash(root.c_str(), getuid()).error(), std::nullopt);
    EXPECT_TRUE(fs::exists(own / "files/note.txt"));
    fs::permissions(root / ".Trash", fs::perms::all | fs::perms::sticky_bit);
    EXPECT_EQ(emptyMountTrash(root.c_str(), getuid()).error(), std::nullopt);
    EXPECT_TRUE(isEmptied(own));
    EXPECT_TRUE(fs::exists(others / "files/kept"));
}

TEST_F(TrashTest, AMountsTrashThatIsALinkIsNotFollowed) {
    const auto user = std::to_string(getuid());
    fill(root / "outside" / user);
    fs::permissions(root / "outside", fs::perms::all | fs::perms::sticky_bit);
    fs::create_directory_symlink(root / "outside", root / ".Trash");
    fs::create_directory_symlink(root / "outside" / user, root / (".Trash-" + user));
    EXPECT_EQ(emptyMountTrash(root.c_str(), getuid()).error(), std::nullopt);
    fs::remove(root / ".Trash");
    fs::create_directory(root / ".Trash");
    fs::permissions(root / ".Trash", fs::perms::all | fs::perms::sticky_bit);
    fs::create_directory_symlink(root / "outside" / user, root / ".Trash" / user);
    EXPECT_EQ(emptyMountTrash(root.c_str(), getuid()).error(), std::nullopt);
    EXPECT_TRUE(fs::exists(root / "outside" / user / "files/note.txt"));
}

TEST_F(TrashTest, AMountsOwnTrashThatCantBeOpenedIsTold) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may open everything";
    }
    const auto user = std::to_string(getuid());
    fs::create_directories(root / ".Trash" / user / "files");
    fs::permissions(root / ".Trash", fs::perms::all | fs::perms::sticky_bit);
    for (const auto& own : {root / (".Trash-" + user), root / ".Trash" / user}) {
        fs::create_directories(own / "files");
        fs::permissions(own, fs::perms::none);
        const auto result = emptyMountTrash(root.c_str(), getuid());
        EXPECT_EQ(result.error(),
                  QString::fromStdString(own.string()) + QStringLiteral(": Permission denied"));
        fs::permissions(own, fs::perms::owner_all);
    }
}

TEST_F(TrashTest, AMountsTrashOfAnotherUserIsNotOurs) {
    const uid_t other = getuid() + 1;
    const auto theirs = root / (".Trash-" + std::to_string(other)); // by its name, and by its owner ours
    fill(theirs);
    EXPECT_EQ(emptyMountTrash(root.c_str(), other).error(), std::nullopt);
    EXPECT_TRUE(fs::exists(theirs / "files/note.txt"));
}

TEST(TrashResult, TellsTheFirstFailureAndHowManyMore) {
    EXPECT_EQ(TrashResult{}.error(), std::nullopt);
    EXPECT_EQ((TrashResult{.failures = 1, .firstFailure = QStringLiteral("a")}.error()), QStringLiteral("a"));
    EXPECT_EQ((TrashResult{.failures = 3, .firstFailure = QStringLiteral("a")}.error()),
              QStringLiteral("a (and 2 more)"));
}

TEST(TrashMounts, AreTheWritableFileSystemsForFiles) {
    const QByteArray mountInfo =
        "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
        "23 22 0:21 / /proc rw,nosuid shared:5 - proc proc rw\n"
        "24 22 0:22 / /sys/fs/cgroup rw - cgroup2 cgroup rw\n"
        "25 22 8:17 / /media/ann/My\\040Disk\\134\\0111 rw,nosuid shared:9 master:2 - vfat /dev/sdb1 rw\n"
        "26 22 8:18 / /media/ann/frozen ro,nosuid - ext4 /dev/sdc1 rw\n"
        "27 22 11:0 / /media/cdrom rw - udf /dev/sr0 ro\n"
        "28 22 0:40 / /mnt/nas rw - nfs4 nas:/export rw,hard\n"
        "29 22 0:41 / /home/ann/server rw - fuse.sshfs ann@server: rw\n"
        "30 22 0:42 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
        "31 22 0:43 / /net rw - autofs systemd-1 rw\n"
        "32 22 7:0 / /snap/core ro - squashfs /dev/loop0 ro\n"
        "33 22 0:44 / /tmp rw - tmpfs tmpfs rw\n"
        "34 22 0:44 / /tmp rw - tmpfs tmpfs rw\n";
    EXPECT_THAT(trashMounts(mountInfo),
                testing::ElementsAre(TrashMount{.path = "/"}, TrashMount{.path = "/media/ann/My Disk\\\t1"},
                                     TrashMount{.path = "/mnt/nas", .isRemote = true},
                                     TrashMount{.path = "/home/ann/server", .isRemote = true},
                                     TrashMount{.path = "/tmp"}));
}

TEST(TrashMounts, ALineThatIsNoneIsPassedOver) {
    EXPECT_THAT(trashMounts(""), testing::IsEmpty());
    EXPECT_THAT(
        trashMounts("nonsense\n\n1 2 3 4 /x rw\n1 2 3 4 /x rw -\n1 2 3 4 /x rw - ext4 x\n- - - - - - -\n"),
        testing::IsEmpty());
}
