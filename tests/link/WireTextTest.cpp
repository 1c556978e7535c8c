#include "link/WireText.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace brenvale;

TEST(ConnectedGreeting, CarriesAnyNameUnharmed) {
    for (const auto& name :
         {QStringLiteral("Desk"), QStringLiteral("a\"b\\c\n\t\u0001"), QStringLiteral("🖥 Büro")}) {
        const auto json = QJsonDocument::fromJson(connectedGreeting(name)).object();
        EXPECT_EQ(json[u"action"], QStringLiteral("connected"));
        EXPECT_EQ(json[u"deviceName"], name);
    }
}

TEST(ConnectedGreeting, IsCompact) {
    EXPECT_EQ(connectedGreeting(QStringLiteral("Desk")), R"({"action":"connected","deviceName":"Desk"})");
}
