#include "platform/linux/FileArguments.h"

#include <QDir>

#include <gtest/gtest.h>

#include <array>

using namespace brenvale;

namespace {

/// What becomes of one argument.
QByteArray addressed(QByteArray argument) {
    std::array<char*, 1> arguments{argument.data()};
    const auto kept = addressOddArguments(arguments);
    return arguments[0];
}

} // namespace

TEST(FileArguments, TextStaysAsItIs) {
    for (const auto* text : {"", "-h", "/tmp/a b.txt", "gr\xC3\xBC\xC3\x9F%FF\n", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(addressed(text), text);
    }
}

TEST(FileArguments, WhatIsNoTextBecomesAnAddressOfTheSameBytes) {
    EXPECT_EQ(addressed("/tmp/\xFF\xFE.txt"), "file:///tmp/%FF%FE.txt");
    EXPECT_EQ(addressed("/a b/100%/\xC3(?#'\"\n"), "file:///a%20b/100%25/%C3%28%3F%23%27%22%0A");
}

TEST(FileArguments, ANameAloneIsOneOfTheCurrentFolder) {
    const auto folder = QDir::currentPath().toUtf8().toPercentEncoding("/");
    EXPECT_EQ(addressed("a\xFF"), "file://" + folder + "/a%FF");
}

TEST(FileArguments, TheOthersAreLeftAlone) {
    QByteArray first("brenvale");
    QByteArray second("\xFF");
    std::array<char*, 2> arguments{first.data(), second.data()};
    const auto kept = addressOddArguments(arguments);
    EXPECT_EQ(arguments[0], first.data());
    EXPECT_NE(arguments[1], second.data());
    EXPECT_EQ(kept.size(), 1);
}
