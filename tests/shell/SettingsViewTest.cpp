#include "fakes/TestView.h"
#include "shell/Tab.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Window : testing::Test, TestView {};

using Tabs = Window;

} // namespace

TEST_F(Window, AsksForBothLogsOnEachAppearance) {
    connect();
    view.appeared();
    view.appeared();
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"get_sms_history"})", R"({"action":"get_call_history"})",
                            R"({"action":"get_sms_history"})", R"({"action":"get_call_history"})"));
}

TEST_F(Window, AsksNothingWhenTheUserComesBackToTheProgram) {
    connect();
    view.becameActive();
    EXPECT_THAT(takeSent(), ElementsAre());
}

TEST_F(Window, ShowsDatesAfreshWhenItAppearsOrTheUserComesBack) {
    fake.clock.time = 1'700'000'000;
    const double date = fake.clock.time * 1000;
    reportSms({{.address = QStringLiteral("1"), .date = date}});
    reportCalls({{.number = QStringLiteral("1"), .date = date}});
    int told = 0;
    for (QAbstractItemModel* model :
         {static_cast<QAbstractItemModel*>(view.sendSmsTab()->filteredConversations()),
          static_cast<QAbstractItemModel*>(view.callsTab()->callListModel())}) {
        QObject::connect(model, &QAbstractItemModel::dataChanged, model, [&told] { ++told; });
    }
    fake.clock.time += 86'400;
    view.appeared();
    view.becameActive();
    EXPECT_EQ(told, 4);
    EXPECT_THAT(column(*view.sendSmsTab()->filteredConversations(), ConversationListModel::RelativeDateRole),
                ElementsAre("Yesterday"));
}

TEST_F(Window, LooksForTheAccessibilityPermissionWhenItAppearsAndWhenTheUserComesBack) {
    const auto told =
        countSignals(*view.remoteControlTab(), &RemoteControlTab::isAccessibilityEnabledChanged);
    EXPECT_FALSE(view.remoteControlTab()->isAccessibilityEnabled());
    fake.accessibilityTrust.isTrusted = true; // where no observer is told
    EXPECT_FALSE(view.remoteControlTab()->isAccessibilityEnabled());
    view.becameActive();
    EXPECT_TRUE(view.remoteControlTab()->isAccessibilityEnabled());
    fake.accessibilityTrust.isTrusted = false;
    view.appeared();
    EXPECT_FALSE(view.remoteControlTab()->isAccessibilityEnabled());
    EXPECT_EQ(*told, 2);
    EXPECT_EQ(fake.accessibilityTrust.prompts, 0) << "looking must not ask the user";
}

TEST_F(Window, KeepsTheLogsThatThePhoneSends) {
    receive(R"({"action":"sms_history","messages":[{"address":"1","body":"Hi","date":5,"type":1}]})");
    receive(R"({"action":"call_history","calls":[{"number":"2","date":5,"duration":1,"type":3}]})");
    ASSERT_EQ(view.sendSmsTab()->phoneSmsLog().size(), 1);
    EXPECT_EQ(view.sendSmsTab()->phoneSmsLog()[0].body, QStringLiteral("Hi"));
    ASSERT_EQ(view.callsTab()->phoneCallLog().size(), 1);
    EXPECT_EQ(view.callsTab()->phoneCallLog()[0].number, QStringLiteral("2"));
}

TEST_F(Window, ShowsANameThatTheCallLogBringsEverywhere) {
    reportSms({{.address = QStringLiteral("1"), .date = 1}});
    store->add({.id = QUuid::createUuid(), .title = QStringLiteral("1")});
    view.sendSmsTab()->openConversation(QStringLiteral("1"));
    std::vector<std::string> conversationChanges;
    std::vector<std::string> notificationChanges;
    recordChanges(*view.sendSmsTab()->filteredConversations(), conversationChanges);
    recordChanges(*view.notificationsTab()->items(), notificationChanges);
    reportCalls({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    EXPECT_THAT(conversationChanges, ElementsAre("change 0-0"));
    EXPECT_THAT(notificationChanges, ElementsAre("change 0-0"));
    EXPECT_THAT(column(*view.sendSmsTab()->filteredConversations(), ConversationListModel::ShownNameRole),
                ElementsAre("Ann"));
    EXPECT_THAT(column(*view.notificationsTab()->items(), NotifListModel::ShownTitleRole),
                ElementsAre("Ann"));
    EXPECT_EQ(view.sendSmsTab()->threadName(), QStringLiteral("Ann"));
}

TEST_F(Window, HasTheDialPadShowTheNumberOfACallThatIsAnnouncedAsAText) {
    fake.internalNotifications.post(InternalNotifications::prepareActiveCall, QStringLiteral("+49 1"));
    EXPECT_EQ(view.callsTab()->dialpadNumber(), QStringLiteral("+49 1"));
    fake.internalNotifications.post(InternalNotifications::prepareActiveCall,
                                    PreparedCall{.number = QStringLiteral("2"), .name = {}});
    EXPECT_EQ(view.callsTab()->dialpadNumber(), QStringLiteral("+49 1")) << "nothing but a text";
    EXPECT_EQ(view.selectedTab(), 0) << "the tab does not change";
}

TEST_F(Window, ReadsTheNotificationPermissionWhenItAppearsAndNotWhenTheUserComesBack) {
    view.becameActive();
    run();
    EXPECT_TRUE(fake.userNotificationCenter.calls.isEmpty());
    view.appeared();
    run();
    EXPECT_EQ(view.settingsTab()->notifAuthStatus(), 2);
}

TEST_F(Window, HasTheAddressShownAfreshWhenTheUserComesBack) {
    const auto told = countSignals(*view.settingsTab(), &SettingsTab::localIPChanged);
    view.appeared();
    EXPECT_EQ(*told, 0) << "the tab does that itself";
    view.becameActive();
    EXPECT_EQ(*told, 1);
}

TEST_F(Window, LeavesTheLoginSwitchAsItWasWhenItAppears) {
    fake.loginItem.enabled = true;
    view.appeared();
    EXPECT_FALSE(view.settingsTab()->launchAtLogin());
}

TEST_F(Window, HasOneSelectedSimForMessagesAndCalls) {
    view.callsTab()->sims()->setSelectedSimSlot(4);
    EXPECT_EQ(view.sendSmsTab()->sims()->selectedSimSlot(), 4);
}

TEST_F(Window, IgnoresLogsOfAnotherKind) {
    reportSms({{.address = QStringLiteral("1")}});
    reportCalls({{.number = QStringLiteral("2")}});
    fake.internalNotifications.post(InternalNotifications::callHistoryUpdated, PreparedCall{});
    fake.internalNotifications.post(InternalNotifications::callHistoryUpdated, QList<SmsRecord>());
    fake.internalNotifications.post(InternalNotifications::smsHistoryUpdated, QList<CallRecord>());
    fake.internalNotifications.post(InternalNotifications::prepareActiveCall, qint64{5});
    EXPECT_EQ(view.sendSmsTab()->phoneSmsLog().size(), 1);
    EXPECT_EQ(view.callsTab()->phoneCallLog().size(), 1);
    EXPECT_EQ(view.callsTab()->dialpadNumber(), QString());
}

TEST_F(Window, MayGoBeforeWhatItObserves) {
    {
        const SettingsView gone(fake.platform, main, *server, *store);
    }
    reportSms({{.address = QStringLiteral("1")}});
    store->availableSIMs.set({{.slot = 1}});
    fake.userDefaults.set(QStringLiteral("port"), 1);
    EXPECT_EQ(view.sendSmsTab()->phoneSmsLog().size(), 1);
}

TEST_F(Window, HasLabelsInTheSidebarAbove250) {
    EXPECT_FALSE(SettingsView::showLabels(250));
    EXPECT_TRUE(SettingsView::showLabels(250.5));
}

TEST_F(Tabs, StandInTheirOwnOrder) {
    QStringList tabs;
    for (const auto& tab : SettingsView::sidebarTabs()) {
        tabs.append(tab.toMap()[QStringLiteral("tab")].toString() + u' ' +
                    tab.toMap()[QStringLiteral("label")].toString());
    }
    EXPECT_THAT(tabs, ElementsAre("4 Call", "2 SMS", "5 File Drop", "1 Notifications", "7 Remote",
                                  "6 Clipboard", "0 Settings", "3 Info"));
}

TEST_F(Tabs, AFirstStartOpensOnTheSettings) {
    EXPECT_EQ(view.selectedTab(), Tab::settings);
    EXPECT_EQ(view.detailTab(), Tab::settings);
}

TEST_F(Tabs, TheChoiceIsStored) {
    view.setSelectedTab(Tab::sms);
    EXPECT_EQ(view.selectedTab(), Tab::sms);
    EXPECT_EQ(fake.userDefaults.integer(u"selectedSettingsTab"), 2);
    const SettingsView afterRestart(fake.platform, main, *server, *store);
    EXPECT_EQ(afterRestart.selectedTab(), Tab::sms);
}

TEST_F(Tabs, TheSettingIsFollowedAndTheRestOfTheWindowStays) {
    view.sendSmsTab()->setChatText(QStringLiteral("draft"));
    const auto told = countSignals(view, &SettingsView::selectedTabChanged);
    fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), 2);
    fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), 2);
    EXPECT_EQ(view.selectedTab(), 2);
    EXPECT_EQ(*told, 1);
    EXPECT_EQ(view.sendSmsTab()->chatText(), QStringLiteral("draft"));
}

TEST_F(Tabs, AnUnknownNumberShowsTheCallsUntilAnotherIsChosen) {
    for (const qint64 number : {qint64{99}, qint64{8}, qint64{-1}, qint64{1} << 40}) {
        fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), number);
        EXPECT_EQ(view.detailTab(), Tab::call) << number;
    }
    fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), 99);
    EXPECT_EQ(view.selectedTab(), 99) << "no entry of the sidebar";
    view.setSelectedTab(Tab::info);
    EXPECT_EQ(view.detailTab(), Tab::info);
}

TEST_F(Tabs, EachNumberShowsItsTab) {
    for (int tab = 0; tab < 8; ++tab) {
        view.setSelectedTab(tab);
        EXPECT_EQ(view.detailTab(), tab);
    }
}
