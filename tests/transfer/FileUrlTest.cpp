#include "transfer/FileUrl.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(LocalFileUrl, AFileWithoutAHostIsLocal) {
    const QUrl url(QStringLiteral("file:///tmp/a%20b.txt"));
    EXPECT_EQ(localFileUrl(url), url);
}

TEST(LocalFileUrl, LocalhostIsThisComputer) {
    for (const auto& text : {QStringLiteral("file://localhost/tmp/a%20b.txt"),
                             QStringLiteral("file://LocalHost/tmp/a%20b.txt")}) {
        const auto local = localFileUrl(QUrl(text));
        ASSERT_TRUE(local);
        EXPECT_EQ(local->toLocalFile(), QStringLiteral("/tmp/a b.txt"));
    }
}

TEST(LocalFileUrl, AnotherHostIsNot) {
    EXPECT_FALSE(localFileUrl(QUrl(QStringLiteral("file://server/share/a.txt"))));
    EXPECT_FALSE(localFileUrl(QUrl(QStringLiteral("file://localhost.example.org/a.txt"))));
    EXPECT_FALSE(localFileUrl(QUrl(QStringLiteral("file://127.0.0.1/a.txt"))));
}

TEST(LocalFileUrl, WhatIsNoFileIsNot) {
    EXPECT_FALSE(localFileUrl(QUrl(QStringLiteral("https://localhost/a.txt"))));
    EXPECT_FALSE(localFileUrl(QUrl(QStringLiteral("a.txt"))));
    EXPECT_FALSE(localFileUrl(QUrl()));
}

TEST(LastPathComponent, IsTheNameOfAFileOrFolder) {
    const auto of = [](const char* url) {
        return lastPathComponent(QUrl(QString::fromUtf8(url)));
    };
    EXPECT_EQ(of("file:///home/me/a.txt"), QStringLiteral("a.txt"));
    EXPECT_EQ(of("file:///home/me/My%20File%23.txt"), QStringLiteral("My File#.txt"));
    EXPECT_EQ(of("file:///home/me/"), QStringLiteral("me"));
    EXPECT_EQ(of("file:///home/me///"), QStringLiteral("me"));
    EXPECT_EQ(of("file:///"), QStringLiteral("/"));
    EXPECT_EQ(of("file://localhost/home/me/a.txt"), QStringLiteral("a.txt"));
    EXPECT_EQ(of(""), QString());
}
