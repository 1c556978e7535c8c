#include "remote/RemoteControlTab.h"
#include "fakes/TestPhone.h"
#include "remote/ControlPad.h"

#include <QMetaProperty>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct RemoteTab : testing::Test, TestPhone {
    RemoteControlTab tab{fake.platform, *server};
};

using Accessibility = RemoteTab;

} // namespace

TEST_F(RemoteTab, SendsCommandsOfBothKinds) {
    connect();
    tab.sendMediaCommand(QStringLiteral("play_pause"));
    tab.sendNavCommand(QStringLiteral("dpad_center"));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"media_command","command":"play_pause"})",
                                        R"({"action":"nav_command","command":"dpad_center"})"));
}

TEST_F(RemoteTab, WithoutAPhoneNothingIsTold) {
    tab.sendNavCommand(QStringLiteral("home"));
    run();
    EXPECT_THAT(fake.log.lines(), IsEmpty());
}

TEST_F(RemoteTab, ViewsReadTheButtonsByName) {
    const auto back = RemoteControlTab::coreButtons()[0].value<ControlPadButton>();
    const auto& type = ControlPadButton::staticMetaObject;
    for (const auto* name : {"title", "icon", "command", "help", "shortcut"}) {
        EXPECT_FALSE(type.property(type.indexOfProperty(name)).readOnGadget(&back).toString().isEmpty())
            << name;
    }
    EXPECT_EQ(RemoteControlTab::shortcutRows()[8].toMap()[QStringLiteral("description")],
              QStringLiteral("Global search"));
    EXPECT_EQ(RemoteControlTab::shortcutRows().size(), 10);
}

TEST_F(Accessibility, IsReadWhenTheTabIsMade) {
    EXPECT_FALSE(tab.isAccessibilityEnabled());
    fake.accessibilityTrust.isTrusted = true;
    EXPECT_TRUE(RemoteControlTab(fake.platform, *server).isAccessibilityEnabled());
}

TEST_F(Accessibility, IsReadWhenItIsAskedFor) {
    const auto told = countSignals(tab, &RemoteControlTab::isAccessibilityEnabledChanged);
    fake.accessibilityTrust.isTrusted = true; // where no observer is told
    EXPECT_FALSE(tab.isAccessibilityEnabled());
    tab.refreshAccessibility();
    tab.refreshAccessibility();
    EXPECT_TRUE(tab.isAccessibilityEnabled());
    EXPECT_EQ(*told, 1);
    EXPECT_EQ(fake.accessibilityTrust.prompts, 0) << "looking must not ask the user";
}

TEST_F(Accessibility, IsFollowedAsTheConsentComesAndGoes) {
    const auto told = countSignals(tab, &RemoteControlTab::isAccessibilityEnabledChanged);
    fake.accessibilityTrust.change(true);
    EXPECT_TRUE(tab.isAccessibilityEnabled());
    fake.accessibilityTrust.change(true);
    fake.accessibilityTrust.change(false);
    EXPECT_FALSE(tab.isAccessibilityEnabled());
    EXPECT_EQ(*told, 2);
}

TEST_F(Accessibility, TheButtonHasTheDesktopAskWhereItCan) {
    fake.accessibilityTrust.isAskable = true;
    tab.openAccessibilitySettings();
    EXPECT_EQ(fake.accessibilityTrust.wishes, 1);
    EXPECT_TRUE(fake.systemSettings.opened.empty());
    EXPECT_EQ(fake.accessibilityTrust.prompts, 0) << "a start's question would be none after a refusal";
}

TEST_F(Accessibility, TheButtonOpensTheSettingsWhereThereIsNobodyToAsk) {
    tab.openAccessibilitySettings();
    fake.accessibilityTrust.isAskable = true;
    fake.accessibilityTrust.isTrusted = true;
    tab.openAccessibilitySettings();
    EXPECT_EQ(fake.accessibilityTrust.wishes, 0);
    EXPECT_THAT(fake.systemSettings.opened,
                ElementsAre(SystemSettings::Pane::accessibility, SystemSettings::Pane::accessibility));
}
