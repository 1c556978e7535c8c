#include "integration/LiveServer.h"
#include "transfer/FileChunkText.h"
#include "transfer/FileTransferListModel.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <atomic>
#include <vector>

#include <sys/stat.h>

using namespace brenvale;

namespace {

constexpr int chunkSize = 1 << 20;
constexpr qint64 spoolMemory = qint64{256} << 20;
const auto filmName = QStringLiteral("film.mp4");

/// The contents of one chunk, unlike those of all others.
QByteArray piece(int number) {
    QByteArray bytes(chunkSize, static_cast<char>(number % 251));
    return bytes.replace(0, 4, QByteArray::number(number).rightJustified(4));
}

/// The messages that the file's are held against, as hashes: they would fill the memory.
std::vector<std::size_t> hashesOfMessages(int chunks) {
    std::vector hashes{qHash(fileTransferStartText(filmName, qint64{chunks} * chunkSize))};
    for (int number = 0; number < chunks; ++number) {
        hashes.push_back(qHash(fileChunkText(filmName, piece(number), number == chunks - 1)));
    }
    return hashes;
}

/// A phone that holds every message behind the greeting against what it ought to be, as they come.
class Receiver {
public:
    Receiver(const std::vector<std::size_t>& expected, quint16 port) : expected_(expected) {
        phone_.onMessage([this](const QByteArray& message) { check(message); });
        EXPECT_TRUE(phone_.connect(QStringLiteral("127.0.0.1"), port).has_value());
        EXPECT_TRUE(waitUntil([this] { return messages_ == 1; }));
    }

    Phone& phone() { return phone_; }
    [[nodiscard]] std::size_t rightMessages() const { return right_; }

    /// Waits until it has as many as expected, for as long as some come.
    void waitForAll() const {
        for (auto seen = messages_.load(); seen <= expected_.size(); seen = messages_) {
            ASSERT_TRUE(waitUntil([&] { return messages_ > seen; })) << seen;
        }
    }

private:
    void check(const QByteArray& message) {
        const auto index = messages_ - 1;
        if (messages_ > 0 && index < expected_.size() && qHash(message) == expected_[index]) {
            ++right_;
        }
        ++messages_;
    }

    const std::vector<std::size_t>& expected_;
    std::atomic<std::size_t> messages_ = 0;
    std::atomic<std::size_t> right_ = 0;
    Phone phone_; // its thread ends first
};

/// The cache folder is one of the test's own.
struct LiveFiles : LiveServer {
    LiveFiles() { qputenv("XDG_CACHE_HOME", cache.path().toUtf8()); }
    ~LiveFiles() override { qunsetenv("XDG_CACHE_HOME"); }

    /// Bytes in files of the cache folder that this process has open and that have no name.
    [[nodiscard]] qint64 bytesInNamelessFiles() const {
        qint64 total = 0;
        const QDir descriptors(QStringLiteral("/proc/self/fd"));
        for (const auto& entry : descriptors.entryInfoList(QDir::System | QDir::Files)) {
            struct stat status{};
            const auto target = entry.symLinkTarget();
            if (target.startsWith(cache.path()) && target.endsWith(QStringLiteral(" (deleted)")) &&
                ::stat(entry.filePath().toUtf8(), &status) == 0) {
                total += status.st_size;
            }
        }
        return total;
    }

    QTemporaryDir cache;
    QTemporaryDir folder;
};

} // namespace

using Files = LiveFiles;

TEST_F(Files, BeyondTheMemoryLimitAFileWaitsOnTheDiskAndArrivesInOrderAtEveryPhone) {
    constexpr int chunks = 216; // base64 makes 288 MiB of them
    QFile file(folder.filePath(filmName));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    for (int number = 0; number < chunks; ++number) {
        ASSERT_EQ(file.write(piece(number)), chunkSize);
    }
    file.close();
    start();
    const auto expected = hashesOfMessages(chunks);
    Receiver first(expected, server->port());
    Receiver second(expected, server->port());
    for (auto* receiver : {&first, &second}) {
        receiver->phone().pauseReading();
    }
    server->sendFile(QUrl::fromLocalFile(file.fileName()));
    ASSERT_TRUE(waitUntil([this] {
        const auto& rows = store->fileTransfers.get();
        return !rows.isEmpty() && rows[0].isCompleted;
    }));
    const auto textBytes = qint64{chunks} * fileChunkText(filmName, piece(0), false).size();
    EXPECT_LT(std::abs(bytesInNamelessFiles() - (textBytes - spoolMemory)), 2 * chunkSize);
    for (auto* receiver : {&first, &second}) {
        receiver->phone().resumeReading();
    }
    for (auto* receiver : {&first, &second}) {
        receiver->waitForAll();
        EXPECT_EQ(receiver->rightMessages(), expected.size());
    }
    EXPECT_TRUE(waitUntil([this] { return bytesInNamelessFiles() == 0; })) << "the disk is given back";
    EXPECT_TRUE(QDir(cache.path()).isEmpty());
}

TEST_F(Files, OneThatStreamsInTellsAViewOfItsProgressNoMoreThanOnceAFrame) {
    constexpr int chunks = 24;
    start();
    const FileTransferListModel model(*store);
    int changes = 0;
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &application, [&] { ++changes; });
    Phone phone;
    greet(phone);
    QElapsedTimer time;
    time.start();
    phone.sendText(fileTransferStartText(filmName, qint64{chunks} * chunkSize));
    for (int number = 0; number < chunks; ++number) {
        phone.sendText(fileChunkText(filmName, piece(number), number == chunks - 1));
    }
    const auto isCompleted = [&] {
        return model.rowCount() == 1 && model.index(0).data(FileTransferListModel::IsCompletedRole).toBool();
    };
    EXPECT_TRUE(waitUntil(isCompleted));
    EXPECT_EQ(model.index(0).data(FileTransferListModel::ProgressRole), 1.0);
    EXPECT_LE(changes, (time.elapsed() / 15) + 1) << "one a frame, and the completion";
}
