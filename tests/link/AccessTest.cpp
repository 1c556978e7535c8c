#include "fakes/TestServer.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

const auto allow = QStringLiteral("allow");
const auto security = QStringLiteral("Security");

struct AccessServer {
    /// Starts the server anew with that section of the settings, and gives what it says on standard error.
    std::string startWith(const QMultiMap<QString, QString>& section) {
        test.fake.userDefaults.setSection(security, section);
        return start();
    }

    std::string start() {
        testing::internal::CaptureStderr();
        test.server->start();
        test.run();
        return testing::internal::GetCapturedStderr();
    }

    /// Whether a peer of that address gets as far as the handshake.
    bool isAdmitted(const QByteArray& host) {
        const auto before = test.fake.log.count("state changed to preparing");
        test.transport.connect(host);
        test.run();
        return test.fake.log.count("state changed to preparing") > before;
    }

    TestServer test;
};

struct Access : testing::Test, AccessServer {};

} // namespace

TEST_F(Access, IsEveryonesUnlessTheSettingsNarrowIt) {
    EXPECT_EQ(start(), "");
    EXPECT_TRUE(isAdmitted("192.168.1.7"));
    EXPECT_TRUE(isAdmitted("2001:db8::1"));
}

TEST_F(Access, IsTheListsAlone) {
    EXPECT_EQ(startWith({{allow, QStringLiteral("192.168.1.0/24")}}), "");
    EXPECT_TRUE(isAdmitted("192.168.1.7"));
    EXPECT_FALSE(isAdmitted("192.168.2.7"));
    EXPECT_FALSE(isAdmitted("2001:db8::1"));
}

TEST_F(Access, WhoIsTurnedAwayIsLoggedAndForgottenBeforeAHandshake) {
    startWith({{allow, QString()}});
    test.transport.connect("192.168.1.7", 40312);
    test.run();
    EXPECT_THAT(test.fake.log.lines(),
                ElementsAre("[WebSocketServer] Incoming connection from 192.168.1.7:40312",
                            "[WebSocketServer] Connection 192.168.1.7:40312 state changed to failed(address "
                            "not allowed)",
                            "[WebSocketServer] Connection 192.168.1.7:40312 failed: address not allowed"));
    test.server->send("{}");
    test.run();
    EXPECT_EQ(test.fake.log.count("Send error"), 0) << "it is no phone any more";
}

TEST_F(Access, APeerWithoutAnAddressIsTurnedAwayOnceThereIsAList) {
    startWith({{allow, QStringLiteral("0.0.0.0/0, ::/0")}});
    test.transport.connect(Endpoint{.text = "(unknown)", .host = {}});
    test.run();
    EXPECT_EQ(test.fake.log.count("state changed to failed(address not allowed)"), 1);
}

TEST_F(Access, IsReadAtEachStart) {
    startWith({{allow, QStringLiteral("10.0.0.1")}});
    test.fake.userDefaults.setSection(security, {{allow, QStringLiteral("10.0.0.2")}});
    EXPECT_TRUE(isAdmitted("10.0.0.1"));
    EXPECT_FALSE(isAdmitted("10.0.0.2"));
    start();
    EXPECT_FALSE(isAdmitted("10.0.0.1"));
    EXPECT_TRUE(isAdmitted("10.0.0.2"));
}

TEST_F(Access, WhatCannotBeReadKeepsEveryoneOutAndSaysSo) {
    EXPECT_EQ(startWith({{allow, QStringLiteral("10.0.0.1, phone")}}),
              "Brenvale: nobody may connect: [Security] allow: \"phone\" is no address and no network\n");
    EXPECT_FALSE(isAdmitted("10.0.0.1"));
    EXPECT_NE(startWith({{QStringLiteral("remoteControl"), QStringLiteral("no")}}), "");
    EXPECT_FALSE(isAdmitted("10.0.0.1"));
    EXPECT_EQ(startWith({}), "") << "and the next start may be better";
    EXPECT_TRUE(isAdmitted("10.0.0.1"));
}

TEST_F(Access, SettingsThatCannotBeReadKeepEveryoneOutAndSaySo) {
    test.fake.userDefaults.failSections(QStringLiteral("the settings file cannot be read"));
    EXPECT_EQ(start(), "Brenvale: nobody may connect: the settings file cannot be read\n");
    EXPECT_FALSE(isAdmitted("127.0.0.1"));
}

TEST_F(Access, RulesOutsideOfTheirSectionKeepEveryoneOutAndSaySo) {
    for (const auto& key : {allow, QStringLiteral("remoteControl")}) {
        AccessServer other;
        other.test.fake.userDefaults.set(key, 1);
        EXPECT_EQ(other.start(), "Brenvale: nobody may connect: access rules stand outside of [Security]\n");
        EXPECT_FALSE(other.isAdmitted("127.0.0.1"));
    }
}

TEST_F(Access, RemoteCommandsDoNothingWhereTheSettingsWantNone) {
    test.fake.accessibilityTrust.isTrusted = true;
    const std::string_view command = R"({"action":"remote_control","command":"volume_up"})";
    startWith({{QStringLiteral("remoteControl"), QStringLiteral("false")}});
    test.receive(command);
    EXPECT_THAT(test.dispatchLog(), testing::IsEmpty());
    EXPECT_TRUE(test.phone->isReceiveArmed());
    test.phone = nullptr;
    startWith({});
    test.receive(command);
    EXPECT_EQ(test.fake.log.count("Command received: volume_up"), 1);
}
