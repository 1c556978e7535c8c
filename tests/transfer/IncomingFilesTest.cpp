#include "fakes/TestServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <gmock/gmock.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct IncomingFiles : testing::Test {
    void start(const QByteArray& name, const QByteArray& members = {}) {
        test.receive(
            std::string_view(R"({"action":"file_transfer_start","fileName":")" + name + '"' + members + '}'));
    }

    void chunk(const QByteArray& name, const QByteArray& bytes, bool isLast = false) {
        data(name, bytes.toBase64(), isLast ? R"(,"isLast":true)" : "");
    }

    void data(const QByteArray& name, const QByteArray& base64, const QByteArray& members = {},
              const QByteArray& action = "file_chunk") {
        test.receive(std::string_view(R"({"action":")" + action + R"(","fileName":")" + name +
                                      R"(","fileData":")" + base64 + '"' + members + '}'));
    }

    [[nodiscard]] QString path(const QString& name) const {
        return test.fake.downloads.folder() + u'/' + name;
    }

    [[nodiscard]] QByteArray contents(const QString& name) const {
        QFile file(path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    [[nodiscard]] const QList<FileTransferRecord>& rows() const { return test.store->fileTransfers.get(); }

    TestServer test;
};

const QString fileName = QStringLiteral("a.txt");

} // namespace

TEST_F(IncomingFiles, AFileArrivesInChunks) {
    start("a.txt", R"(,"fileSize":10)");
    ASSERT_EQ(rows().size(), 1);
    const auto row = rows()[0];
    EXPECT_EQ(row.fileName, fileName);
    EXPECT_EQ(row.fileSize, 10);
    EXPECT_FALSE(row.isOutgoing || row.isCompleted || row.url);
    chunk("a.txt", "hello");
    EXPECT_EQ(rows()[0].progress, 0.5);
    EXPECT_FALSE(rows()[0].url.has_value());
    chunk("a.txt", "world", true);
    EXPECT_EQ(contents(fileName), "helloworld");
    EXPECT_EQ(rows()[0].id, row.id);
    EXPECT_EQ(rows()[0].progress, 1.0);
    EXPECT_TRUE(rows()[0].isCompleted);
    EXPECT_EQ(rows()[0].url, QUrl::fromLocalFile(path(fileName)));
    EXPECT_THAT(test.dispatchLog(), ElementsAre("[WebSocketServer] File handle closed for a.txt"));
}

TEST_F(IncomingFiles, TheUserIsToldAtTheStartAndAtTheEnd) {
    start("a.txt", R"(,"fileSize":3)");
    chunk("a.txt", "abc", true);
    EXPECT_THAT(test.notifications(),
                ElementsAre("Receiving File...: a.txt (0%)", "File Received: Successfully received 'a.txt'",
                            "File Received: a.txt (100%)"));
    const auto& added = test.fake.userNotificationCenter.added;
    EXPECT_EQ(added[0].identifier, added[2].identifier) << "the end replaces the start";
    EXPECT_EQ(added[0].identifier.text(), rows()[0].id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_FALSE(added[0].content.hasDefaultSound);
    EXPECT_TRUE(added[2].content.hasDefaultSound);
}

TEST_F(IncomingFiles, AnExistingFileIsEmptiedAtOnce) {
    start("a.txt");
    chunk("a.txt", "old contents", true);
    start("a.txt");
    EXPECT_EQ(contents(fileName), "");
}

TEST_F(IncomingFiles, ASecondStartForAnOpenNameBeginsAnew) {
    start("a.txt", R"(,"fileSize":4)");
    chunk("a.txt", "ab");
    start("a.txt", R"(,"fileSize":2)");
    ASSERT_EQ(rows().size(), 2);
    chunk("a.txt", "c");
    EXPECT_EQ(rows()[0].progress, 0.5);
    EXPECT_EQ(rows()[1].progress, 0.5) << "the old row is stuck where it was";
    chunk("a.txt", "d", true);
    EXPECT_EQ(contents(fileName), "cd");
    EXPECT_TRUE(rows()[0].isCompleted);
    EXPECT_FALSE(rows()[1].isCompleted);
}

TEST_F(IncomingFiles, TwoNamesAreReceivedAtOneTime) {
    start("a.txt");
    start("b.txt");
    chunk("a.txt", "a1");
    chunk("b.txt", "b1");
    chunk("a.txt", "a2", true);
    chunk("b.txt", "b2", true);
    EXPECT_EQ(contents(fileName), "a1a2");
    EXPECT_EQ(contents(QStringLiteral("b.txt")), "b1b2");
}

TEST_F(IncomingFiles, WithoutASizeTheProgressIsZeroUntilTheEnd) {
    for (const auto* members : {"", R"(,"fileSize":0)", R"(,"fileSize":"9")", R"(,"fileSize":-5)"}) {
        start("a.txt", members);
        chunk("a.txt", "abc");
        EXPECT_EQ(rows()[0].progress, 0) << members;
        chunk("a.txt", "", true);
        EXPECT_EQ(rows()[0].progress, 1.0) << members;
    }
}

TEST_F(IncomingFiles, ProgressIsNotClampedAndTheSizeNeverCompared) {
    start("a.txt", R"(,"fileSize":2)");
    chunk("a.txt", "abcde");
    EXPECT_EQ(rows()[0].progress, 2.5);
    start("b.txt", R"(,"fileSize":100)");
    chunk("b.txt", "a", true);
    EXPECT_EQ(rows()[0].progress, 1.0);
    EXPECT_TRUE(rows()[0].isCompleted);
}

TEST_F(IncomingFiles, AnEmptyLastChunkEndsTheTransfer) {
    start("a.txt");
    data("a.txt", "", R"(,"isLast":true)");
    EXPECT_TRUE(rows()[0].isCompleted);
    EXPECT_EQ(contents(fileName), "");
}

TEST_F(IncomingFiles, AFileTransferEndsWhateverIsLastSays) {
    start("a.txt");
    data("a.txt", "QUJD", R"(,"isLast":false)", "file_transfer");
    EXPECT_TRUE(rows()[0].isCompleted);
    EXPECT_EQ(contents(fileName), "ABC");
}

TEST_F(IncomingFiles, IsLastMustBeABoolean) {
    start("a.txt");
    data("a.txt", "QUJD", R"(,"isLast":1)");
    data("a.txt", "QUJD", R"(,"isLast":"true")");
    EXPECT_FALSE(rows()[0].isCompleted);
    EXPECT_EQ(contents(fileName), "ABCABC");
}

TEST_F(IncomingFiles, AChunkWithoutAStartDoesNothing) {
    data("a.txt", "QUJD", R"(,"isLast":true)");
    data("a.txt", "QUJD", {}, "file_transfer");
    EXPECT_FALSE(QFileInfo::exists(path(fileName)));
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_THAT(test.notifications(), IsEmpty());
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST_F(IncomingFiles, AfterItsEndANameHasNoSession) {
    start("a.txt");
    chunk("a.txt", "abc", true);
    chunk("a.txt", "more", true);
    EXPECT_EQ(contents(fileName), "abc");
    EXPECT_EQ(test.notifications().size(), 3U);
}

TEST_F(IncomingFiles, AMemberThatIsMissingOrOfAnotherTypeEndsSilently) {
    for (const std::string_view message :
         {R"({"action":"file_transfer_start"})", R"({"action":"file_transfer_start","fileName":5})"}) {
        test.receive(message);
    }
    EXPECT_TRUE(rows().isEmpty());
    start("a.txt");
    for (const std::string_view message :
         {R"({"action":"file_chunk","fileName":"a.txt","isLast":true})",
          R"({"action":"file_chunk","fileData":"QUJD","isLast":true})",
          R"({"action":"file_chunk","fileName":"a.txt","fileData":12,"isLast":true})"}) {
        test.receive(message);
    }
    EXPECT_FALSE(rows()[0].isCompleted);
    EXPECT_EQ(contents(fileName), "");
    EXPECT_THAT(test.dispatchLog(), IsEmpty());
}

TEST_F(IncomingFiles, BadBase64IsDroppedAndItsIsLastWithIt) {
    start("a.txt");
    for (const auto* base64 : {"QUJ", "Q", "QU=D", "QUJDR"}) {
        data("a.txt", base64, R"(,"isLast":true)");
    }
    EXPECT_FALSE(rows()[0].isCompleted);
    chunk("a.txt", "good", true);
    EXPECT_EQ(contents(fileName), "good");
}

TEST_F(IncomingFiles, NoiseAndEscapesInBase64AreIgnored) {
    start("a.txt");
    data("a.txt", R"(QU\nJD -_\u0000\r\n)");
    data("a.txt", R"(\/\/8=)", R"(,"isLast":true)");
    EXPECT_EQ(contents(fileName), QByteArray("ABC\xff\xff"));
}

TEST_F(IncomingFiles, ANameWithASlashLeadsIntoAFolderThatIsThere) {
    start("sub/a.txt");
    EXPECT_TRUE(rows().isEmpty());
    ASSERT_EQ(test.dispatchLog().size(), 1);
    EXPECT_TRUE(test.dispatchLog()[0].startsWith("[WebSocketServer] Failed to create file handle: "));
    chunk("sub/a.txt", "lost", true);
    EXPECT_EQ(test.dispatchLog().size(), 1);
    QDir(test.fake.downloads.folder()).mkdir(QStringLiteral("sub"));
    start("sub/a.txt");
    chunk("sub/a.txt", "found", true);
    EXPECT_EQ(contents(QStringLiteral("sub/a.txt")), "found");
    EXPECT_EQ(rows()[0].fileName, QStringLiteral("sub/a.txt"));
}

TEST_F(IncomingFiles, NamesThatNoFileCanHaveAreRefusedByTheDisk) {
    for (const auto* bad : {"", ".", "..", "a\\u0000b"}) {
        start(bad);
    }
    start(QByteArray(5000, 'x'));
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(test.dispatchLog().size(), 5);
}

TEST_F(IncomingFiles, WhatIsNoFileIsNeitherWaitedForNorWrittenTo) {
    ASSERT_EQ(::mkfifo(path(QStringLiteral("pipe")).toUtf8().constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), path(QStringLiteral("device"))));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("pipe")), path(QStringLiteral("link"))));
    for (const auto* name : {"pipe", "device", "link"}) {
        start(name);
        chunk(name, "hello", true);
    }
    const QByteArray line = "[WebSocketServer] Failed to create file handle: Not a regular file";
    EXPECT_THAT(test.dispatchLog(), ElementsAre(line, line, line));
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_THAT(test.notifications(), IsEmpty());
}

TEST_F(IncomingFiles, AFolderInThePlaceOfAFileIsAnError) {
    QDir(test.fake.downloads.folder()).mkdir(QStringLiteral("a"));
    for (const auto* name : {"a", "", ".", "a/"}) {
        start(name);
    }
    EXPECT_EQ(test.fake.log.count("Failed to create file handle: Is a directory"), 4);
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(IncomingFiles, AnyOtherNameIsKept) {
    for (const auto* odd : {"%1 $HOME ~.txt", "ünï 你好 😀.txt", ".hidden", "two\\nlines", " blank "}) {
        start(odd);
        chunk(odd, "x", true);
    }
    EXPECT_EQ(QDir(test.fake.downloads.folder()).entryList(QDir::Files | QDir::Hidden).size(), 5);
    EXPECT_EQ(test.notifications()[1], "File Received: Successfully received '%1 $HOME ~.txt'");
}

TEST_F(IncomingFiles, ALostConnectionChangesNothing) {
    start("a.txt", R"(,"fileSize":6)");
    chunk("a.txt", "abc");
    test.phone->report({Connection::State::failed, "x"});
    test.run();
    test.phone.reset();
    EXPECT_EQ(rows()[0].progress, 0.5);
    chunk("a.txt", "def", true);
    EXPECT_EQ(contents(fileName), "abcdef");
    EXPECT_TRUE(rows()[0].isCompleted);
}

TEST_F(IncomingFiles, ClearingTheListLeavesTheTransferRunning) {
    start("a.txt");
    test.store->clearFileTransfers();
    chunk("a.txt", "abc", true);
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(contents(fileName), "abc");
    EXPECT_EQ(test.notifications().size(), 3U);
}

TEST_F(IncomingFiles, AWriteThatFailsIsLoggedAndTheNextChunkTriesAgain) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    ::getrlimit(RLIMIT_FSIZE, &saved);
    start("a.txt");
    const rlimit full{.rlim_cur = 4, .rlim_max = saved.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    chunk("a.txt", "abc");
    chunk("a.txt", "def", true);
    ::setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_THAT(test.dispatchLog(), ElementsAre("[WebSocketServer] Error writing chunk: File too large"));
    EXPECT_FALSE(rows()[0].isCompleted);
    chunk("a.txt", "ghi", true);
    EXPECT_EQ(contents(fileName), "abcdghi") << "a full disk takes what it can";
    EXPECT_TRUE(rows()[0].isCompleted);
}

TEST_F(IncomingFiles, WithoutAStoreTheFileArrivesAllTheSame) {
    test.store.reset();
    start("a.txt");
    chunk("a.txt", "abc", true);
    EXPECT_EQ(contents(fileName), "abc");
    EXPECT_EQ(test.notifications().size(), 3U);
}

TEST_F(IncomingFiles, AMillionRandomBytesArriveUnharmed) {
    QByteArray file(1'000'003, Qt::Uninitialized);
    for (auto& byte : file) {
        byte = static_cast<char>(QRandomGenerator::global()->generate());
    }
    start("a.txt", R"(,"fileSize":1000003)");
    for (qsizetype offset = 0; offset < file.size(); offset += 65'537) {
        chunk("a.txt", file.mid(offset, 65'537), offset + 65'537 >= file.size());
    }
    EXPECT_EQ(QCryptographicHash::hash(contents(fileName), QCryptographicHash::Sha256),
              QCryptographicHash::hash(file, QCryptographicHash::Sha256));
    EXPECT_EQ(rows()[0].progress, 1.0);
}
