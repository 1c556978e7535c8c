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

TEST(LocalPath, IsThePathByteForByte) {
    const auto of = [](const char* url) {
        return localPath(QUrl(QString::fromUtf8(url)));
    };
    EXPECT_EQ(of("file:///tmp/a%20b.txt"), "/tmp/a b.txt");
    EXPECT_EQ(of("file:///tmp/100%2525%23%3F.txt"), "/tmp/100%25#?.txt");
    EXPECT_EQ(of("file:///tmp/line%0Aend"), "/tmp/line\nend");
    EXPECT_EQ(of("file:///tmp/%C3%BC.txt"), "/tmp/\xC3\xBC.txt");
    EXPECT_EQ(of("file:///tmp/%FF%fe.txt"), "/tmp/\xFF\xFE.txt");
    EXPECT_EQ(of("file:///tmp/%25FF.txt"), "/tmp/%FF.txt");
    EXPECT_EQ(localPath(QUrl::fromLocalFile(QStringLiteral("/tmp/%41;é"))), "/tmp/%41;\xC3\xA9");
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
