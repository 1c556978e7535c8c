#include "platform/linux/clipboard/ClipboardContents.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

TEST(ClipboardContents, ATextStandsUnderAllNamesOfText) {
    const auto contents = ClipboardContents::ofText(QStringLiteral("ü"));
    EXPECT_THAT(contents.formats(),
                ElementsAre("text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "STRING", "TEXT"));
    EXPECT_EQ(*contents.find("UTF8_STRING"), "ü");
    EXPECT_EQ(contents.find("image/png"), nullptr);
}

TEST(ClipboardContents, AnEmptyTextIsSomething) {
    EXPECT_EQ(ClipboardContents::ofText(QString()).items.size(), 5);
}

TEST(ClipboardContents, ASecretSaysSoToClipboardManagers) {
    auto contents = ClipboardContents::ofText(QStringLiteral("typed"));
    markAsSecret(contents);
    EXPECT_EQ(*contents.find("x-kde-passwordManagerHint"), "secret");
}

TEST(TextFormat, TheOneThatNamesItsEncodingIsTaken) {
    EXPECT_EQ(textFormatAmong({"STRING", "text/plain", "UTF8_STRING", "text/html"}), "UTF8_STRING");
    EXPECT_EQ(textFormatAmong({"STRING", "text/plain;charset=UTF-8", "UTF8_STRING"}),
              "text/plain;charset=UTF-8");
    EXPECT_EQ(textFormatAmong({"TIMESTAMP", "TEXT", "STRING"}), "STRING");
}

TEST(TextFormat, FilesAndPicturesAloneHaveNone) {
    EXPECT_EQ(textFormatAmong({"text/uri-list", "x-special/gnome-copied-files", "TARGETS"}), std::nullopt);
    EXPECT_EQ(textFormatAmong({"image/png", "text/html"}), std::nullopt);
    EXPECT_EQ(textFormatAmong({}), std::nullopt);
}

TEST(DecodedText, IsReadByTheEncodingOfItsFormat) {
    EXPECT_EQ(decodedText("UTF8_STRING", "ü 日"), QStringLiteral("ü 日"));
    EXPECT_EQ(decodedText("STRING", "\xfc"), QStringLiteral("ü"));
}

TEST(DecodedText, WhereTheFormatNamesNoEncodingItIsUtf8OrElseLatin1) {
    for (const auto* format : {"text/plain", "TEXT"}) {
        EXPECT_EQ(decodedText(format, "ü"), QStringLiteral("ü"));
        EXPECT_EQ(decodedText(format, "\xfc"), QStringLiteral("ü"));
    }
}

TEST(DecodedText, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(decodedText("UTF8_STRING", "a\xff"), QStringLiteral(u"a\uFFFD"));
}

TEST(DecodedText, TheEndOfAStringIsNoPartOfIt) {
    EXPECT_EQ(decodedText("UTF8_STRING", QByteArrayView("text\0", 5)), "text");
    EXPECT_EQ(decodedText("UTF8_STRING", QByteArrayView()), "");
}

TEST(ContentsFormat, QuestionsOfTheProtocolAreNone) {
    EXPECT_TRUE(isContentsFormat("UTF8_STRING"));
    EXPECT_TRUE(isContentsFormat("image/png"));
    for (const auto* question : {"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "DELETE"}) {
        EXPECT_FALSE(isContentsFormat(question));
    }
}
