#include "messages/DialerKeyHandler.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct DialPad : testing::Test {
    bool press(int key, const char* characters) {
        return DialerKeyHandler{number, isCallActive,
                                [this] {
                                    ++returns;
                                }}
            .handle(key, QString::fromUtf8(characters));
    }

    QString number;
    bool isCallActive = false;
    int returns = 0;
};

} // namespace

using DialerKeys = DialPad;

TEST_F(DialerKeys, DigitsStarAndHashAreTyped) {
    for (const char* characters : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "*", "#"}) {
        EXPECT_TRUE(press(Qt::Key_unknown, characters));
    }
    EXPECT_EQ(number, QStringLiteral("0123456789*#"));
}

TEST_F(DialerKeys, NothingElseIs) {
    for (const char* characters : {"a", "+", " ", "", "21", "٣", "\t"}) {
        EXPECT_FALSE(press(Qt::Key_A, characters)) << characters;
    }
    EXPECT_EQ(number, QString());
}

TEST_F(DialerKeys, BothDeleteKeysTakeTheLastOne) {
    number = QStringLiteral("123");
    EXPECT_TRUE(press(Qt::Key_Backspace, "\b"));
    EXPECT_EQ(number, QStringLiteral("12"));
    EXPECT_TRUE(press(Qt::Key_Delete, "\x7f"));
    EXPECT_EQ(number, QStringLiteral("1"));
}

TEST_F(DialerKeys, DeletingNothingIsHandledToo) {
    EXPECT_TRUE(press(Qt::Key_Backspace, "\b"));
    EXPECT_EQ(number, QString());
}

TEST_F(DialerKeys, ReturnCallsAndSoDoesTheKeypadsEnter) {
    EXPECT_TRUE(press(Qt::Key_Return, "\r"));
    EXPECT_EQ(returns, 1);
    EXPECT_TRUE(press(Qt::Key_Enter, "\r"));
    EXPECT_EQ(returns, 2);
}

TEST_F(DialerKeys, DuringACallAllArePassedOn) {
    isCallActive = true;
    number = QStringLiteral("1");
    EXPECT_FALSE(press(Qt::Key_2, "2"));
    EXPECT_FALSE(press(Qt::Key_Backspace, "\b"));
    EXPECT_FALSE(press(Qt::Key_Return, "\r"));
    EXPECT_EQ(number, QStringLiteral("1"));
    EXPECT_EQ(returns, 0);
}
