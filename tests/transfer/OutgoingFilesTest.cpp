#include "fakes/TestServer.h"
#include "transfer/FileChunkText.h"

#include <QDir>

#include <gmock/gmock.h>

#include <thread>

#include <sys/stat.h>
#include <unistd.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int chunkSize = 1'048'576;

/// A main queue that runs nothing, and calls `hook` once with the next step that is handed to it.
struct HookedQueue final : DispatchQueue {
    void async(Step /*step*/) override {
        if (const auto once = std::exchange(hook, {})) {
            once();
        }
    }
    void asyncAfter(std::chrono::milliseconds /*delay*/, Step /*step*/) override {}

    std::function<void()> hook;
};

/// Counts the reads that the calling thread has asked the system for, from any thread.
std::function<std::optional<qint64>()> readsOfThisThread() {
    return [path = QStringLiteral("/proc/self/task/%1/io").arg(::gettid())]() -> std::optional<qint64> {
        QFile file(path);
        if (!file.open(QFile::ReadOnly)) {
            return {};
        }
        for (const auto& line : file.readAll().split('\n')) {
            if (line.startsWith("syscr: ")) {
                return line.mid(7).toLongLong();
            }
        }
        return {};
    };
}

struct OutgoingFiles : testing::Test {
    /// A file with these contents.
    [[nodiscard]] QUrl makeFile(const QString& fileName, const QByteArray& contents) const {
        const auto path = folder.filePath(fileName);
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(contents);
        return QUrl::fromLocalFile(path);
    }

    void send(const QUrl& url) {
        test.server->sendFile(url);
        test.run();
    }

    /// Sends the file to a phone; `change` happens when the file has been opened and measured, and not read.
    [[nodiscard]] std::shared_ptr<FakeConnection> sendWhileChanged(const QUrl& url,
                                                                   std::function<void()> change) {
        HookedQueue main;
        const auto server =
            std::make_shared<WebSocketServer>(test.fake.platform, test.transport, test.queue, main);
        server->start();
        auto phone = test.transport.connect();
        test.queue.run();
        main.hook = std::move(change);
        server->sendFile(url);
        test.queue.run();
        return phone;
    }

    /// A phone whose greeting is out of the way.
    [[nodiscard]] std::shared_ptr<FakeConnection> connectPhone() {
        auto phone = test.connectPhone();
        phone->sent.clear();
        return phone;
    }

    [[nodiscard]] const QList<FileTransferRecord>& rows() const { return test.store->fileTransfers.get(); }

    TestServer test;
    QTemporaryDir folder;
    const QString name = QStringLiteral("a.bin");
};

} // namespace

TEST_F(OutgoingFiles, AFileGoesAsAStartAndItsChunks) {
    const auto phone = connectPhone();
    const QByteArray contents(chunkSize + 1, 'x');
    send(makeFile(name, contents));
    EXPECT_THAT(phone->sent, ElementsAre(fileTransferStartText(name, chunkSize + 1),
                                         fileChunkText(name, QByteArray(chunkSize, 'x'), false),
                                         fileChunkText(name, "x", true)));
    EXPECT_THAT(test.notifications(), ElementsAre("File Sent: Successfully sent 'a.bin' to Android"));
}

TEST_F(OutgoingFiles, ExactlyOneChunkIsTheLast) {
    const auto phone = connectPhone();
    send(makeFile(name, QByteArray(chunkSize, 'x')));
    ASSERT_EQ(phone->sent.size(), 2U);
    EXPECT_EQ(phone->sent[1], fileChunkText(name, QByteArray(chunkSize, 'x'), true));
}

TEST_F(OutgoingFiles, TheRowTellsOfTheProgress) {
    std::vector<double> progress;
    const auto watching = test.store->fileTransfers.subscribe([&](const auto& transfers) {
        if (!transfers.isEmpty()) {
            progress.push_back(transfers[0].progress);
        }
    });
    const auto url = makeFile(name, QByteArray(4 * chunkSize, 'x'));
    send(url);
    EXPECT_THAT(progress, ElementsAre(0, 0.25, 0.5, 0.75, 1));
    ASSERT_EQ(rows().size(), 1);
    EXPECT_EQ(rows()[0].fileName, name);
    EXPECT_EQ(rows()[0].fileSize, 4 * chunkSize);
    EXPECT_EQ(rows()[0].url, url);
    EXPECT_TRUE(rows()[0].isOutgoing);
    EXPECT_TRUE(rows()[0].isCompleted);
}

TEST_F(OutgoingFiles, AnEmptyFileIsOnlyAnnounced) {
    const auto phone = connectPhone();
    send(makeFile(name, ""));
    EXPECT_THAT(phone->sent, ElementsAre(fileTransferStartText(name, 0)));
    EXPECT_EQ(rows()[0].progress, 0);
    EXPECT_FALSE(rows()[0].isCompleted);
    EXPECT_EQ(test.notifications().size(), 1U);
}

TEST_F(OutgoingFiles, NoMessageLeavesBeforeTheWholeFileIsRead) {
    const auto phone = connectPhone();
    QStringList order;
    test.server->sendFile(makeFile(name, QByteArray(2 * chunkSize, 'x')));
    test.server->send("later");
    test.queue.async(
        [&] { order.append(QStringLiteral("sent before the end: %1").arg(phone->sent.size())); });
    test.run();
    EXPECT_EQ(order, QStringList{QStringLiteral("sent before the end: 1")})
        << "only what was queued beside the file";
    ASSERT_EQ(phone->sent.size(), 4U);
    EXPECT_EQ(phone->sent[0], "later");
}

TEST_F(OutgoingFiles, FilesSentTogetherNeverMix) {
    const auto phone = connectPhone();
    test.server->sendFile(makeFile(QStringLiteral("1"), QByteArray(chunkSize + 1, 'x')));
    test.server->sendFile(makeFile(QStringLiteral("2"), QByteArray(1, 'y')));
    test.run();
    ASSERT_EQ(phone->sent.size(), 5U);
    EXPECT_EQ(phone->sent[2], fileChunkText(QStringLiteral("1"), "x", true));
    EXPECT_EQ(phone->sent[3], fileTransferStartText(QStringLiteral("2"), 1));
}

TEST_F(OutgoingFiles, EveryPhoneGetsTheFile) {
    const auto first = connectPhone();
    const auto second = connectPhone();
    send(makeFile(name, QByteArray(chunkSize + 1, 'x')));
    EXPECT_EQ(first->sent, second->sent);
    EXPECT_EQ(first->sent.size(), 3U);
    EXPECT_EQ(first->sent[1].constData(), second->sent[1].constData()) << "one text is shared, not copied";
}

TEST_F(OutgoingFiles, WithoutAPhoneTheUserStillSeesFileSent) {
    send(makeFile(name, QByteArray(chunkSize + 1, 'x')));
    EXPECT_TRUE(rows()[0].isCompleted);
    EXPECT_THAT(test.notifications(), ElementsAre("File Sent: Successfully sent 'a.bin' to Android"));
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST_F(OutgoingFiles, AFileThatCannotBeOpenedIsToldAndHasNoRow) {
    const auto phone = connectPhone();
    send(QUrl::fromLocalFile(folder.filePath(QStringLiteral("missing.bin"))));
    send(QUrl::fromLocalFile(folder.path() + u'/'));
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_THAT(phone->sent, IsEmpty());
    ASSERT_EQ(test.dispatchLog().size(), 2);
    EXPECT_EQ(test.dispatchLog()[0], "[WebSocketServer] Failed to read/send file: No such file or directory");
    EXPECT_EQ(test.notifications()[0],
              "File Send Failed: Could not read or send 'missing.bin'. Error: No such file or directory");
    EXPECT_TRUE(QString::fromStdString(test.notifications()[1])
                    .startsWith(QStringLiteral("File Send Failed: Could not read or send '%1'. Error: ")
                                    .arg(QDir(folder.path()).dirName())));
}

TEST_F(OutgoingFiles, WhatIsNoFileIsNotWaitedForAndTheNextFileGoes) {
    const auto pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    const auto phone = connectPhone();
    for (const auto& path : {pipe, QStringLiteral("/dev/zero")}) {
        send(QUrl::fromLocalFile(path));
    }
    send(QUrl::fromLocalFile(folder.path() + u'/'));
    EXPECT_THAT(test.dispatchLog(),
                ElementsAre("[WebSocketServer] Failed to read/send file: Not a regular file",
                            "[WebSocketServer] Failed to read/send file: Not a regular file",
                            "[WebSocketServer] Failed to read/send file: Is a directory"));
    const auto folderName = QFileInfo(folder.path()).fileName().toStdString();
    EXPECT_THAT(
        test.notifications(),
        ElementsAre("File Send Failed: Could not read or send 'pipe'. Error: Not a regular file",
                    "File Send Failed: Could not read or send 'zero'. Error: Not a regular file",
                    "File Send Failed: Could not read or send '" + folderName + "'. Error: Is a directory"));
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_THAT(phone->sent, IsEmpty());
    send(makeFile(QStringLiteral("a.txt"), "hello"));
    EXPECT_EQ(phone->sent.size(), 2U);
}

TEST_F(OutgoingFiles, OnlyTheSizeAtTheStartCounts) {
    const auto phone = connectPhone();
    send(QUrl::fromLocalFile(
        QStringLiteral("/proc/self/status"))); // has contents, and says that its size is 0
    EXPECT_THAT(phone->sent, ElementsAre(fileTransferStartText(QStringLiteral("status"), 0)));
}

TEST_F(OutgoingFiles, AFileThatShrinksHoldsUpTheLinkUntilItHasItsSizeAgain) {
    const auto url = makeFile(name, "startend");
    const auto reads = readsOfThisThread();
    if (!reads()) {
        GTEST_SKIP() << "the system does not count reads";
    }
    std::jthread restorer;
    const auto shrink = [&] {
        EXPECT_TRUE(QFile::resize(url.toLocalFile(), 5));
        const auto limit = *reads() + 1000; // far more than the file has chunks
        restorer = std::jthread([&, limit](const std::stop_token& stop) {
            while (!stop.stop_requested() && reads() < limit) {
                std::this_thread::yield();
            }
            QFile file(url.toLocalFile());
            EXPECT_TRUE(file.open(QFile::Append));
            file.write("end");
        });
    };
    const auto phone = sendWhileChanged(url, shrink);
    EXPECT_THAT(phone->sent, ElementsAre(fileTransferStartText(name, 8), fileChunkText(name, "start", false),
                                         fileChunkText(name, "end", true)));
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST_F(OutgoingFiles, AnyNameGoesOut) {
    const auto phone = connectPhone();
    const auto odd = QStringLiteral("50% \"ü\" 😀.bin");
    send(makeFile(odd, "x"));
    EXPECT_EQ(rows()[0].fileName, odd);
    EXPECT_EQ(phone->sent[1], fileChunkText(odd, "x", true));
    EXPECT_EQ(test.notifications()[0], "File Sent: Successfully sent '50% \"ü\" 😀.bin' to Android");
}

TEST_F(OutgoingFiles, WithoutAStoreTheFileGoesAllTheSame) {
    const auto phone = connectPhone();
    test.store.reset();
    send(makeFile(name, "x"));
    EXPECT_EQ(phone->sent.size(), 2U);
    EXPECT_EQ(test.notifications().size(), 1U);
}
