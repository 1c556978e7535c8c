#include "messages/LowerCase.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(LowerCase, OfEveryCodePointIsQts) {
    for (char32_t codePoint = 0; codePoint <= QChar::LastValidCodePoint; ++codePoint) {
        if (QChar::isSurrogate(codePoint)) {
            continue;
        }
        const auto text = QStringLiteral("A") + QString::fromUcs4(&codePoint, 1) + QStringLiteral("Z");
        ASSERT_EQ(lowerCase(text), text.toLower()) << "U+" << std::hex << static_cast<quint32>(codePoint);
    }
}

TEST(LowerCase, LeavesHalvesOfCharactersAlone) {
    for (const auto half : {QChar(0xd801), QChar(0xdc00)}) {
        EXPECT_EQ(lowerCase(half + QStringLiteral("A") + half), half + QStringLiteral("a") + half);
    }
}

TEST(LowerCase, OfNothingIsNothing) {
    EXPECT_TRUE(lowerCase(QString()).isEmpty());
}
