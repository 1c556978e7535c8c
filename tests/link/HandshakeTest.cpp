#include "link/Handshake.h"

#include <gtest/gtest.h>

using brenvale::withoutServerField;

namespace {

bool isForeign(std::string_view origin, std::string_view host, std::string_view ownName = "desk") {
    return brenvale::isForeignWebOrigin(origin, host, ownName);
}

} // namespace

TEST(ForeignWebOrigin, NullIsForeign) {
    EXPECT_TRUE(isForeign("null", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("NULL", "192.168.1.2:8765"));
}

TEST(ForeignWebOrigin, AnotherSiteIsForeign) {
    EXPECT_TRUE(isForeign("http://evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("HTTPS://evil.example:443", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("https://192.168.1.2.evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("https://localhost.evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("http://", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeign("http://[2001:db8::1]", "[2001:db8::2]:8765"));
}

TEST(ForeignWebOrigin, TheSameHostIsNotForeign) {
    EXPECT_FALSE(isForeign("http://192.168.1.2", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("http://Desk.local:3000", "desk.local:8765"));
    EXPECT_FALSE(isForeign("http://[2001:db8::1]:8765", "[2001:db8::1]:8765"));
}

TEST(ForeignWebOrigin, LoopbackNamesAreNotForeign) {
    EXPECT_FALSE(isForeign("http://localhost:5173", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("https://app.localhost", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("http://127.0.0.1", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("http://[::1]:80", "192.168.1.2:8765"));
}

TEST(ForeignWebOrigin, ANameThatWasMadeToPointHereIsForeign) {
    for (const auto* name : {"evil.example", "desk.evil.example", "evil.desk", "evil.local", "evil-desk",
                             "desk2", "192.168.1.2.evil.example", "localhost.evil.example",
                             "desk.local.evil.example", "0x7f000001", "", "."}) {
        const std::string host(name);
        EXPECT_TRUE(isForeign("http://" + host + ":8765", host + ":8765")) << host;
        EXPECT_TRUE(isForeign("http://localhost:3000", host)) << host << ", whatever page it is";
    }
}

TEST(ForeignWebOrigin, TheComputersOwnNameIsNotForeignWithOrWithoutLocal) {
    for (const auto* name : {"desk", "DESK", "desk.local", "Desk.Local", "desk.", "desk.local."}) {
        const std::string host(name);
        EXPECT_FALSE(isForeign("http://" + host, host + ":8765")) << host;
    }
    for (const auto* own : {"desk.local", "desk.example.org"}) {
        EXPECT_FALSE(isForeign("http://desk", "desk", own)) << own;
        EXPECT_FALSE(isForeign("http://desk.local", "desk.local", own)) << own;
    }
    EXPECT_FALSE(isForeign("http://desk.example.org", "desk.example.org", "desk.example.org"));
    EXPECT_TRUE(isForeign("http://desk.example.com", "desk.example.com", "desk.example.org"));
}

TEST(ForeignWebOrigin, AComputerWithoutANameHasNone) {
    EXPECT_TRUE(isForeign("http://.local", ".local", ""));
    EXPECT_TRUE(isForeign("http://desk", "desk", ""));
    EXPECT_FALSE(isForeign("http://10.0.0.1", "10.0.0.1", ""));
}

TEST(ForeignWebOrigin, LoopbackNamesMayBeAskedFor) {
    for (const auto* host : {"localhost:8765", "app.localhost", "127.0.0.1:8765", "[::1]:8765"}) {
        EXPECT_FALSE(isForeign("http://localhost", host)) << host;
    }
}

TEST(ForeignWebOrigin, WhatIsNoWebPageIsNotForeign) {
    EXPECT_FALSE(isForeign("", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("android-app://phone", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("file://", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeign("android-app://phone", "any.example")) << "nor is its host looked at";
}

TEST(AnswerWithoutServerField, LosesThatLineAlone) {
    EXPECT_EQ(withoutServerField("HTTP/1.1 101 S\r\nUpgrade: w\r\nServer: S/1\r\nA: b\r\n\r\n"),
              "HTTP/1.1 101 S\r\nUpgrade: w\r\nA: b\r\n\r\n");
    EXPECT_EQ(withoutServerField("HTTP/1.1 101 S\r\nserver:\r\n\r\nServer: body\r\n"),
              "HTTP/1.1 101 S\r\n\r\nServer: body\r\n");
}

TEST(AnswerWithoutServerField, StaysWhereThereIsNone) {
    for (const auto* answer :
         {"", "HTTP/1.1 101 S\r\n\r\n", "HTTP/1.1 101 S\r\nX-Server: S\r\n\r\nServer: body\r\n",
          "HTTP/1.1 101 S\r\nServer: without an end\r\n"}) {
        EXPECT_EQ(withoutServerField(answer), answer);
    }
}
