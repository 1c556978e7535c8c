#include "ReceivedFiles.h"
#include "Printing.h"

#include "PhoneMessages.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

TEST(StoredFileName, IsTheLastPathComponent) {
    EXPECT_EQ(storedFileName(QStringLiteral("a b.txt")), QStringLiteral("a b.txt"));
    EXPECT_EQ(storedFileName(QStringLiteral("../../etc/passwd")), QStringLiteral("passwd"));
    EXPECT_EQ(storedFileName(QStringLiteral("C:\\x\\y.txt")), QStringLiteral("y.txt"));
}

TEST(StoredFileName, IsNothingWhereNoNameIsLeft) {
    for (const char* name : {"", ".", "..", "a/", "a/..", "\\"}) {
        EXPECT_FALSE(storedFileName(QString::fromLatin1(name)).has_value()) << name;
    }
    EXPECT_FALSE(storedFileName(QString(QChar(QChar::Null))).has_value());
}

class ReceivedFilesTest : public testing::Test {
protected:
    std::optional<QString> take(const QByteArray& message) {
        return files_.take(QJsonDocument::fromJson(message).object());
    }

    QByteArray stored(const QString& name) {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
    }

    QStringList names() { return QDir(folder_.path()).entryList(QDir::Files); }

    QTemporaryDir folder_;
    ReceivedFiles files_{folder_.path()};
    QString name_ = QStringLiteral("a.txt");
};

TEST_F(ReceivedFilesTest, ChunksFollowEachOtherAndTheEndTellsTheSize) {
    EXPECT_EQ(take(fileStartMessage(name_, 5)), std::nullopt);
    EXPECT_EQ(take(fileChunkMessage(name_, "abc", false)), std::nullopt);
    EXPECT_TRUE(names().filter(QStringLiteral("a.txt")).isEmpty() || stored(name_) == "(no file)");
    const auto line = take(fileChunkMessage(name_, "de", true));
    EXPECT_TRUE(line && line->endsWith(QLatin1String("a.txt, 5 bytes")))
        << line.value_or(QString()).toStdString();
    EXPECT_EQ(stored(name_), "abcde");
}

TEST_F(ReceivedFilesTest, NewFileTakesThePlaceOfTheOldOne) {
    for (const char* content : {"old and long", "new"}) {
        (void)take(fileStartMessage(name_, 3));
        (void)take(fileChunkMessage(name_, content, true));
    }
    EXPECT_EQ(stored(name_), "new");
    EXPECT_EQ(names(), QStringList{name_});
}

TEST_F(ReceivedFilesTest, SecondStartBeginsAnew) {
    (void)take(fileStartMessage(name_, 9));
    (void)take(fileChunkMessage(name_, "first", false));
    (void)take(fileStartMessage(name_, 6));
    (void)take(fileChunkMessage(name_, "second", true));
    EXPECT_EQ(stored(name_), "second");
}

TEST_F(ReceivedFilesTest, EmptyFileIsWholeFromItsStart) {
    EXPECT_NE(take(fileStartMessage(name_, 0)), std::nullopt);
    EXPECT_EQ(stored(name_), "");
}

TEST_F(ReceivedFilesTest, ChunksWithoutAStartMakeTheFile) {
    const QString quoted = QStringLiteral("a \"b\".txt");
    EXPECT_NE(take(fileChunkMessage(quoted, "x", true)), std::nullopt);
    EXPECT_EQ(stored(quoted), "x");
}

TEST_F(ReceivedFilesTest, PathStaysInsideTheFolder) {
    const QString path = QStringLiteral("../") + name_;
    (void)take(fileStartMessage(path, 1));
    (void)take(fileChunkMessage(path, "x", true));
    EXPECT_EQ(stored(name_), "x");
}

TEST_F(ReceivedFilesTest, UnusableNameIsRefused) {
    EXPECT_NE(take(fileStartMessage(QStringLiteral(".."), 1)), std::nullopt);
    EXPECT_NE(take(fileChunkMessage(QStringLiteral(".."), "x", true)), std::nullopt);
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(ReceivedFilesTest, BrokenBase64LeavesNoFile) {
    (void)take(fileStartMessage(name_, 3));
    EXPECT_NE(take(R"({"action":"file_chunk","fileName":"a.txt","fileData":"?!","isLast":true})"),
              std::nullopt);
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(ReceivedFilesTest, OtherMessagesAreNoFiles) {
    EXPECT_EQ(take(clipboardMessage(QStringLiteral("x"))), std::nullopt);
}

} // namespace
} // namespace brenvale::phone
