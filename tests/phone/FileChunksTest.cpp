#include "FileChunks.h"
#include "Printing.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

class FileChunksTest : public testing::Test {
protected:
    QString fileOf(const QByteArray& content) {
        QFile file(folder_.filePath(QStringLiteral("näme.bin")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

    static QList<QJsonObject> messagesOf(const QString& path) {
        QList<QJsonObject> messages;
        auto chunks = FileChunks::open(path);
        EXPECT_TRUE(chunks.has_value());
        while (const auto message = chunks->next()) {
            messages.append(QJsonDocument::fromJson(*message).object());
        }
        return messages;
    }

    static QByteArray dataOf(const QJsonObject& message) {
        return QByteArray::fromBase64(message.value(QLatin1String("fileData")).toString().toLatin1());
    }

    static bool isLast(const QJsonObject& message) { return message.value(QLatin1String("isLast")).toBool(); }

    QTemporaryDir folder_;
};

TEST_F(FileChunksTest, StartHasTheLastPathComponentAndTheSize) {
    const QJsonObject start = messagesOf(fileOf("12345")).constFirst();
    EXPECT_EQ(start.value(QLatin1String("action")).toString(), QStringLiteral("file_transfer_start"));
    EXPECT_EQ(start.value(QLatin1String("fileName")).toString(), QStringLiteral("näme.bin"));
    EXPECT_EQ(start.value(QLatin1String("fileSize")).toInteger(), 5);
}

TEST_F(FileChunksTest, ExactlyOneChunkIsTheLastOne) {
    const QByteArray content(fileChunkSize, 'x');
    const auto messages = messagesOf(fileOf(content));
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(isLast(messages.at(1)));
    EXPECT_EQ(dataOf(messages.at(1)), content);
}

TEST_F(FileChunksTest, OneByteMoreIsAChunkOfItsOwn) {
    const auto messages = messagesOf(fileOf(QByteArray(fileChunkSize, 'x') + "y"));
    ASSERT_EQ(messages.size(), 3);
    EXPECT_FALSE(isLast(messages.at(1)));
    EXPECT_TRUE(isLast(messages.at(2)));
    EXPECT_EQ(dataOf(messages.at(2)), "y");
}

TEST_F(FileChunksTest, EmptyFileHasOneEmptyLastChunk) {
    const auto messages = messagesOf(fileOf({}));
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(isLast(messages.at(1)));
    EXPECT_TRUE(dataOf(messages.at(1)).isEmpty());
}

TEST_F(FileChunksTest, SlashesAreEscapedWhereWanted) {
    auto chunks = FileChunks::open(fileOf("\xff\xff\xff"), SlashStyle::Escaped);
    ASSERT_TRUE(chunks.has_value());
    (void)chunks->next();
    EXPECT_TRUE(chunks->next().value_or(QByteArray()).contains(R"(\/\/\/\/)"));
}

TEST_F(FileChunksTest, FoldersAndMissingFilesAreErrors) {
    EXPECT_FALSE(FileChunks::open(folder_.path()).has_value());
    EXPECT_FALSE(FileChunks::open(folder_.filePath(QStringLiteral("missing"))).has_value());
}

} // namespace
} // namespace brenvale::phone
