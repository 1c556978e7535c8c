#include "link/OutgoingText.h"

#include "fakes/Sanitized.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <unistd.h>

using namespace brenvale;

namespace {

struct OutgoingSpoolTest : testing::Test {
    OutgoingSpoolTest() { qputenv("XDG_CACHE_HOME", folder.path().toUtf8()); }
    ~OutgoingSpoolTest() override { qunsetenv("XDG_CACHE_HOME"); }

    QTemporaryDir folder;
    OutgoingSpool spool{100};
};

QByteArray numbered(int number) {
    return {40, static_cast<char>('a' + number)};
}

qint64 residentBytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

} // namespace

TEST_F(OutgoingSpoolTest, TextsBeyondTheLimitWaitInAFileAndComeBackUnharmed) {
    std::vector<std::shared_ptr<const OutgoingText>> texts;
    texts.reserve(20);
    for (int i = 0; i < 20; ++i) {
        texts.push_back(spool.add(numbered(i)));
    }
    EXPECT_EQ(spool.memoryUse(), 80U);
    for (const int i : {19, 0, 7, 2, 7}) {
        EXPECT_EQ(texts[static_cast<std::size_t>(i)]->bytes(), numbered(i));
    }
}

TEST_F(OutgoingSpoolTest, MemoryThatComesFreeIsUsedAgain) {
    auto first = spool.add(numbered(0));
    const auto second = spool.add(numbered(1));
    const auto third = spool.add(numbered(2));
    EXPECT_EQ(spool.memoryUse(), 80U);
    first.reset();
    EXPECT_EQ(spool.memoryUse(), 40U);
    const auto fourth = spool.add(numbered(3));
    EXPECT_EQ(spool.memoryUse(), 80U);
    EXPECT_EQ(third->bytes(), numbered(2));
}

TEST_F(OutgoingSpoolTest, TheFileHasNoName) {
    const auto large = spool.add(QByteArray(1000, 'x'));
    EXPECT_EQ(spool.memoryUse(), 0U);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_EQ(large->bytes(), QByteArray(1000, 'x'));
}

TEST_F(OutgoingSpoolTest, WhereNoFileCanBeWrittenMemoryHasToDo) {
    qputenv("XDG_CACHE_HOME", "/proc/nowhere");
    const auto large = spool.add(QByteArray(1000, 'x'));
    EXPECT_EQ(spool.memoryUse(), 1000U);
    EXPECT_EQ(large->bytes(), QByteArray(1000, 'x'));
}

TEST_F(OutgoingSpoolTest, TextsMayOutliveTheSpool) {
    std::shared_ptr<const OutgoingText> inMemory;
    std::shared_ptr<const OutgoingText> inFile;
    {
        OutgoingSpool passing(100);
        inMemory = passing.add(numbered(0));
        inFile = passing.add(QByteArray(1000, 'x'));
    }
    EXPECT_EQ(inMemory->bytes(), numbered(0));
    EXPECT_EQ(inFile->bytes(), QByteArray(1000, 'x'));
}

TEST_F(OutgoingSpoolTest, TheMemoryOfManyTextsGoesBackToTheSystem) {
#ifdef BRENVALE_SANITIZED
    GTEST_SKIP() << "a sanitizer keeps freed memory to itself";
#endif
    constexpr int textSize = 100'000; // larger ones are blocks of their own, unless the program sets a limit
    constexpr int count = 1000;
    // A thread of its own, as the link has: the C library gives each thread its own memory.
    const std::jthread link([] {
        OutgoingSpool large(std::size_t{textSize} * count);
        std::vector<std::shared_ptr<const OutgoingText>> texts;
        std::vector<std::unique_ptr<int>> lateBlocks;
        const auto before = residentBytes();
        for (int i = 0; i < count; ++i) {
            texts.push_back(large.add(QByteArray(textSize, 'x')));
            lateBlocks.push_back(std::make_unique<int>(i));
        }
        EXPECT_GT(residentBytes() - before, qint64{textSize} * count / 2);
        texts.clear();
        EXPECT_LT(residentBytes() - before, qint64{16} << 20);
    });
}

TEST(OutgoingText, IsSharedNotCopied) {
    const QByteArray original(1000, 'x');
    const auto shared = makeOutgoingText(original);
    EXPECT_EQ(shared->bytes().constData(), original.constData());
}
