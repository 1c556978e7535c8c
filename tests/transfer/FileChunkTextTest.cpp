#include "transfer/FileChunkText.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace brenvale;

TEST(FileTransferStart, IsATemplateThatEscapesNothing) {
    EXPECT_EQ(fileTransferStartText(QStringLiteral("a.txt"), 5),
              R"({"action":"file_transfer_start","fileName":"a.txt","fileSize":5})");
    EXPECT_EQ(fileTransferStartText(QStringLiteral("a\"\\ü"), 9'000'000'000),
              R"({"action":"file_transfer_start","fileName":"a"\ü","fileSize":9000000000})");
}

TEST(FileChunk, IsWrittenJson) {
    const QByteArray bytes("\0\xff\xfe"
                           "any bytes",
                           12);
    for (const auto& name : {QStringLiteral("a.txt"), QStringLiteral("\"q\"\\\n😀"), QString()}) {
        for (const bool isLast : {false, true}) {
            const auto text = fileChunkText(name, bytes, isLast);
            EXPECT_EQ(QJsonDocument::fromJson(text).object(),
                      (QJsonObject{{"action", "file_chunk"},
                                   {"fileName", name},
                                   {"fileData", QString::fromLatin1(bytes.toBase64())},
                                   {"isLast", isLast}}))
                << text.toStdString();
        }
    }
}

TEST(FileChunk, HasPaddedBase64WithoutLineEnds) {
    EXPECT_TRUE(fileChunkText(QStringLiteral("a"), QByteArray(100, 'x'), false)
                    .contains("\"fileData\":\"" + QByteArray(100, 'x').toBase64() + '"'));
}

TEST(FileChunk, OfAMebibyteIsBuiltInOneBlock) {
    const auto text = fileChunkText(QStringLiteral("a"), QByteArray(1 << 20, 'x'), false);
    EXPECT_LT(text.capacity(), text.size() + 16);
    EXPECT_EQ(
        QByteArray::fromBase64(QJsonDocument::fromJson(text).object()[u"fileData"].toString().toLatin1()),
        QByteArray(1 << 20, 'x'));
}
