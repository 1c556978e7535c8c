#include "platform/RequestIdentifier.h"

#include <QSet>

#include <gtest/gtest.h>

using brenvale::RequestIdentifier;

TEST(RequestIdentifier, IsItsText) {
    const RequestIdentifier identifier(QStringLiteral("k"));
    EXPECT_EQ(identifier.text(), QStringLiteral("k"));
    EXPECT_EQ(identifier.size(), 1);
    EXPECT_EQ(RequestIdentifier(QString()).text(), QString());
}

TEST(RequestIdentifier, PartsAreJoinedByColons) {
    const auto joined =
        RequestIdentifier::joined({QStringLiteral("Chat"), QString(), QStringLiteral("Hi: you")});
    EXPECT_EQ(joined.text(), QStringLiteral("Chat::Hi: you"));
    EXPECT_EQ(joined.size(), joined.text().size());
}

TEST(RequestIdentifier, IsTheSameHoweverItsTextWasMade) {
    const auto joined = RequestIdentifier::joined({QStringLiteral("a"), QStringLiteral("b:c")});
    EXPECT_EQ(joined, RequestIdentifier(QStringLiteral("a:b:c")));
    EXPECT_EQ(joined, RequestIdentifier::joined({QStringLiteral("a:b"), QStringLiteral("c")}));
    EXPECT_NE(joined, RequestIdentifier(QStringLiteral("a:b:d")));
    EXPECT_NE(RequestIdentifier(QString()), RequestIdentifier(QStringLiteral(":")));
}

TEST(RequestIdentifier, FindsItselfInASet) {
    const QSet<RequestIdentifier> set{RequestIdentifier(QStringLiteral("a:b"))};
    EXPECT_TRUE(set.contains(RequestIdentifier::joined({QStringLiteral("a"), QStringLiteral("b")})));
    EXPECT_FALSE(set.contains(RequestIdentifier(QStringLiteral("a"))));
}

TEST(RequestIdentifier, SharesItsPartsWithWhoHasThem) {
    const QString body(10'000'000, u'x');
    const auto identifier = RequestIdentifier::joined({QStringLiteral("a"), body});
    EXPECT_FALSE(body.isDetached()) << "no copy of its own";
    EXPECT_EQ(identifier.size(), 10'000'002);
}
