#include "link/Handshake.h"

#include <gtest/gtest.h>

using brenvale::isForeignWebOrigin;

TEST(ForeignWebOrigin, NullIsForeign) {
    EXPECT_TRUE(isForeignWebOrigin("null", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("NULL", "192.168.1.2:8765"));
}

TEST(ForeignWebOrigin, AnotherSiteIsForeign) {
    EXPECT_TRUE(isForeignWebOrigin("http://evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("HTTPS://evil.example:443", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("https://192.168.1.2.evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("https://localhost.evil.example", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("http://", "192.168.1.2:8765"));
    EXPECT_TRUE(isForeignWebOrigin("http://[2001:db8::1]", "[2001:db8::2]:8765"));
}

TEST(ForeignWebOrigin, TheSameHostIsNotForeign) {
    EXPECT_FALSE(isForeignWebOrigin("http://192.168.1.2", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("http://Desk.local:3000", "desk.local:8765"));
    EXPECT_FALSE(isForeignWebOrigin("http://[2001:db8::1]:8765", "[2001:db8::1]:8765"));
}

TEST(ForeignWebOrigin, LoopbackNamesAreNotForeign) {
    EXPECT_FALSE(isForeignWebOrigin("http://localhost:5173", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("https://app.localhost", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("http://127.0.0.1", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("http://[::1]:80", "192.168.1.2:8765"));
}

TEST(ForeignWebOrigin, WhatIsNoWebPageIsNotForeign) {
    EXPECT_FALSE(isForeignWebOrigin("", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("android-app://phone", "192.168.1.2:8765"));
    EXPECT_FALSE(isForeignWebOrigin("file://", "192.168.1.2:8765"));
}
