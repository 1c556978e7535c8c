#include "link/AccessRules.h"

#include <gtest/gtest.h>

using brenvale::AccessRules;
using brenvale::parseAccessRules;

namespace {

AccessRules allowing(const QString& list) {
    return parseAccessRules({{QStringLiteral("allow"), list}}).value_or(AccessRules());
}

bool isRead(const QString& key, const QString& value) {
    return parseAccessRules({{key, value}}).has_value();
}

bool isAllowRead(const char* list) {
    return isRead(QStringLiteral("allow"), QString::fromUtf8(list));
}

QString errorOf(const QMultiMap<QString, QString>& section) {
    const auto rules = parseAccessRules(section);
    return rules ? QString() : rules.error();
}

} // namespace

TEST(AccessRules, AreOpenByDefault) {
    const auto rules = parseAccessRules({});
    ASSERT_TRUE(rules.has_value());
    EXPECT_FALSE(rules->allow.has_value());
    EXPECT_TRUE(rules->remoteControl);
    for (const auto* address : {"192.168.1.7", "2001:db8::1", "fe80::1%eth0", ""}) {
        EXPECT_TRUE(rules->admits(address)) << address;
    }
}

TEST(AccessRules, AnEmptyListIsNobody) {
    for (const auto* list : {"", "  ", ",", " , "}) {
        const auto rules = allowing(QString::fromUtf8(list));
        ASSERT_TRUE(rules.allow.has_value()) << list;
        EXPECT_FALSE(rules.admits("127.0.0.1"));
        EXPECT_FALSE(rules.admits("::1"));
        EXPECT_TRUE(rules.remoteControl) << "the one says nothing of the other";
    }
}

TEST(AccessRules, NobodyIsNobody) {
    EXPECT_FALSE(AccessRules::nobody().admits("127.0.0.1"));
    EXPECT_FALSE(AccessRules::nobody().admits("::1"));
    EXPECT_FALSE(AccessRules::nobody().remoteControl);
}

TEST(AccessRules, AnAddressIsThatOneAlone) {
    const auto rules = allowing(QStringLiteral("192.168.1.7"));
    EXPECT_TRUE(rules.admits("192.168.1.7"));
    EXPECT_TRUE(rules.admits("::ffff:192.168.1.7")) << "IPv4 that came over the IPv6 socket";
    EXPECT_FALSE(rules.admits("192.168.1.70"));
    EXPECT_FALSE(rules.admits("192.168.1.6"));
    EXPECT_FALSE(rules.admits("::192.168.1.7"));
    EXPECT_FALSE(rules.admits("::1"));
}

TEST(AccessRules, ANetworkIsItsFirstBits) {
    const auto rules = allowing(QStringLiteral("10.20.0.0/15"));
    EXPECT_TRUE(rules.admits("10.20.0.0"));
    EXPECT_TRUE(rules.admits("10.21.255.255"));
    EXPECT_FALSE(rules.admits("10.22.0.0"));
    EXPECT_FALSE(rules.admits("10.19.255.255"));
}

TEST(AccessRules, HostBitsBeyondTheMaskAreIgnored) {
    EXPECT_TRUE(allowing(QStringLiteral("192.168.1.77/24")).admits("192.168.1.1"));
    EXPECT_FALSE(allowing(QStringLiteral("192.168.1.77/24")).admits("192.168.2.77"));
    EXPECT_TRUE(allowing(QStringLiteral("fd00::1234/64")).admits("fd00::9"));
    EXPECT_TRUE(allowing(QStringLiteral("fd12::ffff/7")).admits("fc00::"));
}

TEST(AccessRules, TheMasksAtTheEnds) {
    EXPECT_TRUE(allowing(QStringLiteral("10.0.0.1/32")).admits("10.0.0.1"));
    EXPECT_FALSE(allowing(QStringLiteral("10.0.0.1/32")).admits("10.0.0.0"));
    EXPECT_TRUE(allowing(QStringLiteral("1.2.3.4/0")).admits("203.0.113.9"));
    EXPECT_FALSE(allowing(QStringLiteral("0.0.0.0/0")).admits("2001:db8::1")) << "all of IPv4 is not IPv6";
    EXPECT_TRUE(allowing(QStringLiteral("fd00::1/128")).admits("fd00::1"));
    EXPECT_FALSE(allowing(QStringLiteral("fd00::1/128")).admits("fd00::2"));
    EXPECT_TRUE(allowing(QStringLiteral("::/0")).admits("2001:db8::1"));
}

TEST(AccessRules, AllOfIPv6IsNotIPv4) {
    for (const auto* list : {"::/0", "::/80", "::/95"}) {
        EXPECT_FALSE(allowing(QString::fromUtf8(list)).admits("192.168.1.7")) << list;
        EXPECT_FALSE(allowing(QString::fromUtf8(list)).admits("::ffff:192.168.1.7")) << list;
    }
}

TEST(AccessRules, MappedIPv4IsIPv4) {
    EXPECT_TRUE(allowing(QStringLiteral("::ffff:192.168.1.7")).admits("192.168.1.7"));
    EXPECT_TRUE(allowing(QStringLiteral("::ffff:192.168.1.0/120")).admits("192.168.1.200"));
    EXPECT_FALSE(allowing(QStringLiteral("::ffff:192.168.1.0/120")).admits("192.168.2.1"));
    EXPECT_TRUE(allowing(QStringLiteral("::ffff:0:0/96")).admits("203.0.113.9"));
    EXPECT_FALSE(allowing(QStringLiteral("::ffff:0:0/96")).admits("2001:db8::1"));
}

TEST(AccessRules, TheZoneOfAPeerDoesNotCount) {
    const auto rules = allowing(QStringLiteral("fe80::/10"));
    EXPECT_TRUE(rules.admits("fe80::1%lo"));
    EXPECT_TRUE(rules.admits("fe80::1%3"));
    EXPECT_FALSE(rules.admits("fec0::1%lo"));
}

TEST(AccessRules, BlanksAndCommasSetApart) {
    for (const auto* list : {"10.0.0.1,fd00::1", "10.0.0.1 fd00::1", " 10.0.0.1 ,\tfd00::1, "}) {
        const auto rules = allowing(QString::fromUtf8(list));
        EXPECT_TRUE(rules.admits("10.0.0.1")) << list;
        EXPECT_TRUE(rules.admits("fd00::1")) << list;
        EXPECT_FALSE(rules.admits("10.0.0.2")) << list;
    }
}

TEST(AccessRules, APeerWithoutAnAddressIsKeptOutOnceThereIsAList) {
    EXPECT_FALSE(allowing(QStringLiteral("0.0.0.0/0 ::/0")).admits(""));
    EXPECT_FALSE(allowing(QStringLiteral("0.0.0.0/0 ::/0")).admits("nonsense"));
}

TEST(AccessRules, WhatIsNoAddressCannotBeRead) {
    for (const auto* list : {"phone", "192.168.1", "192.168.1.256", "192.168.1.7:8765", "010.0.0.1", "0x7f.1",
                             "192.168.1.*", "[::1]", "fe80::1%eth0", "fe80::%lo/10", "1.2.3.4-1.2.3.9",
                             "everyone", "10.0.0.1;10.0.0.2", "10.0.0.1 phone", "\"10.0.0.1\"", "１.2.3.4"}) {
        EXPECT_FALSE(isAllowRead(list)) << list;
    }
}

TEST(AccessRules, WhatIsNoMaskCannotBeRead) {
    for (const auto* list : {"10.0.0.0/33", "10.0.0.0/", "10.0.0.0/-1", "10.0.0.0/+8", "10.0.0.0/8/8",
                             "10.0.0.0/255.0.0.0", "10.0.0.0/ 8", "10.0.0.0/0x8", "fd00::/129", "fd00::/1e1",
                             "::ffff:1.2.3.4/129", "/8", "/", "10.0.0.0/4294967304"}) {
        EXPECT_FALSE(isAllowRead(list)) << list;
    }
}

TEST(AccessRules, RemoteControlIsTrueOrFalse) {
    const auto key = QStringLiteral("remoteControl");
    for (const auto* word : {"false", "False", " FALSE "}) {
        const auto rules = parseAccessRules({{key, QString::fromUtf8(word)}});
        ASSERT_TRUE(rules.has_value()) << word;
        EXPECT_FALSE(rules->remoteControl) << word;
        EXPECT_FALSE(rules->allow.has_value()) << "the one says nothing of the other";
    }
    EXPECT_TRUE(
        parseAccessRules({{key, QStringLiteral("true")}}).value_or(AccessRules::nobody()).remoteControl);
    for (const auto* word : {"", "no", "off", "0", "1", "yes", "falsch", "true,false"}) {
        EXPECT_FALSE(isRead(key, QString::fromUtf8(word))) << word;
    }
}

TEST(AccessRules, TheCaseOfAKeyDoesNotMatter) {
    EXPECT_FALSE(parseAccessRules({{QStringLiteral("ALLOW"), QStringLiteral("10.0.0.1")}})
                     .value_or(AccessRules())
                     .admits("10.0.0.2"));
    EXPECT_FALSE(parseAccessRules({{QStringLiteral("remotecontrol"), QStringLiteral("false")}})
                     .value_or(AccessRules())
                     .remoteControl);
}

TEST(AccessRules, AnUnknownKeyMayBeAMisspeltOne) {
    for (const auto* key : {"alow", "allowed", "allow ", "#allow", "deny", "remote_control", "allow/x", ""}) {
        EXPECT_FALSE(isRead(QString::fromUtf8(key), QStringLiteral("10.0.0.1"))) << key;
    }
}

TEST(AccessRules, AKeyThatIsThereTwiceCannotBeRead) {
    EXPECT_EQ(errorOf({{QStringLiteral("allow"), QStringLiteral("10.0.0.1")},
                       {QStringLiteral("Allow"), QStringLiteral("10.0.0.1")}}),
              QStringLiteral("[Security] allow: it is there twice"));
}

TEST(AccessRules, TheErrorSaysWhatCannotBeRead) {
    EXPECT_EQ(errorOf({{QStringLiteral("allow"), QStringLiteral("10.0.0.1, phone")}}),
              QStringLiteral("[Security] allow: \"phone\" is no address and no network"));
    EXPECT_EQ(errorOf({{QStringLiteral("remoteControl"), QStringLiteral("no")}}),
              QStringLiteral("[Security] remoteControl: \"no\" is neither true nor false"));
    EXPECT_EQ(errorOf({{QStringLiteral("alow"), QStringLiteral("::1")}}),
              QStringLiteral("[Security] alow: there is no such key"));
}

TEST(AccessRules, StandInTheirSectionAlone) {
    const brenvale::SettingsSections good{
        {QStringLiteral("security"), {{QStringLiteral("Allow"), QString()}}},
        {QStringLiteral("General"), {{QStringLiteral("port"), QStringLiteral("1")}}}};
    EXPECT_FALSE(brenvale::accessRulesOf(good)->admits("127.0.0.1"));
    for (const auto* key : {"allow", "Allow", "remotecontrol"}) {
        for (const auto* section : {"General", "Other"}) {
            const brenvale::SettingsSections misplaced{
                {QString::fromLatin1(section), {{QString::fromLatin1(key), QStringLiteral("10.0.0.1")}}}};
            EXPECT_EQ(brenvale::accessRulesOf(misplaced).error(),
                      QStringLiteral("access rules stand outside of [Security]"));
        }
    }
}

TEST(AccessRules, OfASectionThatIsThereTwiceCountAsOne) {
    const brenvale::SettingsSections twice{
        {QStringLiteral("Security"), {{QStringLiteral("allow"), QString()}}},
        {QStringLiteral("security"), {{QStringLiteral("allow"), QStringLiteral("::/0")}}}};
    EXPECT_FALSE(brenvale::accessRulesOf(twice));
}
