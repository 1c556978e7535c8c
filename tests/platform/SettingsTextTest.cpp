#include "platform/SettingsText.h"

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

using Section = QMultiMap<QString, QString>;
const auto allow = QStringLiteral("allow");

Section securityOf(const QByteArray& text) {
    return parseSettings(text).value_or(SettingsSections()).value(QStringLiteral("Security"));
}

} // namespace

TEST(SettingsText, HasTheValuesAsTheyAreWritten) {
    EXPECT_EQ(securityOf("[Security]\nallow=10.0.0.1, fd00::/8\nremoteControl=false\n"),
              (Section{{allow, QStringLiteral("10.0.0.1, fd00::/8")},
                       {QStringLiteral("remoteControl"), QStringLiteral("false")}}));
    EXPECT_EQ(securityOf("[Security]\nallow=\n"), (Section{{allow, QString()}}));
    EXPECT_EQ(securityOf("[ Security ]\r\nallow = \"10.0.0.1\" ; a remark\r\n"),
              (Section{{allow, QStringLiteral("10.0.0.1")}}));
    EXPECT_EQ(securityOf("[Security]\nallow=\"10.0.0.1; 10.0.0.2\"\n"),
              (Section{{allow, QStringLiteral("10.0.0.1; 10.0.0.2")}}));
}

TEST(SettingsText, WhatStandsBeforeTheFirstSectionIsGeneral) {
    EXPECT_EQ(parseSettings("port=9000")->value(QStringLiteral("General")),
              (Section{{QStringLiteral("port"), QStringLiteral("9000")}}));
}

TEST(SettingsText, HasAKeyAsOftenAsItIsThere) {
    EXPECT_EQ(securityOf("[Security]\nallow=1\n[Other]\nallow=2\n[Security]\nallow=3\nAllow=4\n").size(), 3);
}

TEST(SettingsText, RemarksAreLeftOut) {
    EXPECT_EQ(securityOf("# by hand\n; by hand\n[Security]\n  # allow=10.0.0.1\n;allow=10.0.0.2\n"),
              Section());
}

TEST(SettingsText, ALineThatCannotBeReadIsAnError) {
    for (const auto* text : {"[Security\nallow=1\n", "[Security]\nallow 1\n", "[Security]\nallow\n",
                             "Security]\nallow=1\n", "[General]\nport\n", "["}) {
        EXPECT_EQ(parseSettings(text).error(),
                  QStringLiteral("the settings file has a line that cannot be read"))
            << text;
    }
}

TEST(SettingsText, AValueThatGoesOnInTheNextLineIsAnError) {
    EXPECT_FALSE(parseSettings("[General]\nname=\"x\n[Security]\nallow=10.0.0.1\n"));
    EXPECT_FALSE(parseSettings("[General]\nname=x\\\n[Security]\nallow=10.0.0.1\n"));
}
