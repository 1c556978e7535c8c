#include "integration/LiveServer.h"
#include "transfer/FileChunkText.h"

#include <QFile>
#include <QThread>

using namespace brenvale;

namespace {

/// The main thread is the test's own: while it does not turn its event loop, main is blocked.
struct LiveBlockedMain : LiveServer {
    /// Waits without turning the event loop.
    static bool waitBlocked(const std::function<bool()>& condition) {
        const QDeadlineTimer deadline(std::chrono::minutes(1));
        while (!condition() && !deadline.hasExpired()) {
            QThread::msleep(1);
        }
        return condition();
    }

    [[nodiscard]] qsizetype received() const { return fake.log.count("Received complete message"); }
};

const auto fileName = QStringLiteral("film.mp4");

} // namespace

using BlockedMain = LiveBlockedMain;

TEST_F(BlockedMain, AnUploadGoesOnToItsEnd) {
    constexpr int chunks = 3000;           // more than a flood may have,
    const QByteArray bytes(16 << 10, 'x'); // by the number and by the bytes
    start();
    Phone phone;
    greet(phone);
    phone.sendText(fileTransferStartText(fileName, qint64{chunks} * bytes.size()));
    for (int chunk = 1; chunk <= chunks; ++chunk) {
        phone.sendText(fileChunkText(fileName, bytes, chunk == chunks));
    }
    EXPECT_TRUE(waitBlocked([this] { return fake.log.count("File handle closed for film.mp4") == 1; }));
    EXPECT_EQ(QFile(fake.downloads.folder() + u'/' + fileName).size(), qint64{chunks} * bytes.size());
    EXPECT_TRUE(store->fileTransfers.get().isEmpty()) << "main has not run";
    EXPECT_TRUE(waitUntil([this] {
        const auto& rows = store->fileTransfers.get();
        return !rows.isEmpty() && rows[0].isCompleted && rows[0].progress == 1.0;
    }));
}

TEST_F(BlockedMain, AFloodWaitsAndASecondPhoneIsGreetedAndAnswered) {
    constexpr int flood = 5000;
    start();
    Phone flooding;
    greet(flooding);
    for (int i = 0; i < flood; ++i) {
        flooding.sendText(R"({"app":"A","title":"T","body":")" + QByteArray::number(i) + "\"}");
    }
    ASSERT_TRUE(waitBlocked([this] { return received() == 1024; }));

    Phone second;
    greet(second);
    server->send("to all");
    EXPECT_EQ(second.waitForMessage(), "to all");
    EXPECT_EQ(flooding.waitForMessage(), "to all") << "it is not read, and hears all the same";
    second.sendText(R"({"action":"file_transfer_start","fileName":"b"})");
    second.sendText(R"({"action":"file_transfer","fileName":"b","fileData":"aGVsbG8="})");
    EXPECT_TRUE(waitBlocked([this] { return fake.log.count("File handle closed for b") == 1; }));
    EXPECT_EQ(received(), 1024 + 2) << "and the flood waits still";

    EXPECT_TRUE(waitUntil([&] { return received() == flood + 2; }));
    EXPECT_TRUE(waitUntil([&] {
        const auto& items = store->items.get();
        return !items.isEmpty() && items.front().body == QString::number(flood - 1);
    }));
}
