#include "fakes/TestView.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct CallsTab : testing::Test, TestView {
    std::vector<PreparedCall> announced;
    InternalNotifications::Observation observation = fake.internalNotifications.addObserver(
        InternalNotifications::prepareActiveCall,
        [this](const auto& object) { announced.push_back(std::get<PreparedCall>(object)); });
};

using DialPad = CallsTab;
using StartCall = CallsTab;
using DialerSims = CallsTab;

} // namespace

TEST_F(DialPad, HasTwelveButtonsRowByRow) {
    QStringList texts;
    for (const auto& button : SettingsView::dialButtons()) {
        texts.append(button.toMap()[QStringLiteral("main")].toString() + u':' +
                     button.toMap()[QStringLiteral("letters")].toString());
    }
    EXPECT_THAT(texts, ElementsAre("1:", "2:A B C", "3:D E F", "4:G H I", "5:J K L", "6:M N O", "7:P Q R S",
                                   "8:T U V", "9:W X Y Z", "*:", "0:+", "#:"));
}

TEST_F(DialPad, ItsButtonsAppendAndDelete) {
    view.removeLastFromDialpadNumber();
    EXPECT_EQ(view.dialpadNumber(), QString());
    view.appendToDialpadNumber(QStringLiteral("1"));
    view.appendToDialpadNumber(QStringLiteral("#"));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("1#"));
    view.removeLastFromDialpadNumber();
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("1"));
}

TEST_F(DialPad, TakesTheKeyboard) {
    connect();
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_Asterisk, QStringLiteral("*")));
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_1, QStringLiteral("1")));
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_2, QStringLiteral("2")));
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_Backspace, QStringLiteral("\b")));
    EXPECT_FALSE(view.dialpadKeyPressed(Qt::Key_A, QStringLiteral("a")));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("*1"));
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_Return, QStringLiteral("\r")));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"*1","simSlot":0})"));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("*1"));
}

TEST_F(DialPad, ReturnOnAnEmptyDisplayDoesNothing) {
    connect();
    EXPECT_TRUE(view.dialpadKeyPressed(Qt::Key_Return, QStringLiteral("\r")));
    EXPECT_THAT(takeSent(), ElementsAre());
    EXPECT_TRUE(announced.empty());
}

TEST_F(DialPad, ShowsTheNumberOfACallThatIsAnnouncedAsAText) {
    observation = {};
    fake.internalNotifications.post(InternalNotifications::prepareActiveCall, QStringLiteral("+49 1"));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("+49 1"));
    fake.internalNotifications.post(InternalNotifications::prepareActiveCall,
                                    PreparedCall{.number = QStringLiteral("2"), .name = {}});
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("+49 1")) << "nothing but a text";
    EXPECT_EQ(view.selectedTab(), 0) << "the tab does not change";
}

TEST_F(StartCall, CallsTheNumberAsItStandsAndAnnouncesTheCall) {
    connect();
    reportCalls({{.number = QStringLiteral("491"), .name = QStringLiteral("Ann")}});
    view.setSelectedSimSlot(4);
    view.appendToDialpadNumber(QStringLiteral("4*91#"));
    view.startCall();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"4*91#","simSlot":4})"));
    EXPECT_THAT(announced,
                ElementsAre(PreparedCall{.number = QStringLiteral("4*91#"), .name = QStringLiteral("Ann")}));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("4*91#"));
}

TEST_F(StartCall, ANumberThatNobodyKnowsIsItsOwnName) {
    view.appendToDialpadNumber(QStringLiteral("7"));
    view.startCall();
    EXPECT_THAT(announced,
                ElementsAre(PreparedCall{.number = QStringLiteral("7"), .name = QStringLiteral("7")}))
        << "without a phone, too";
}

TEST_F(StartCall, ALogRowRedialsAtOnce) {
    connect();
    view.redial(QStringLiteral("+49 1"));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"+49 1","simSlot":0})"));
    EXPECT_EQ(view.dialpadNumber(), QStringLiteral("+49 1"));
}

TEST_F(StartCall, ALogRowWithoutANumberCallsNobody) {
    connect();
    view.redial(QString());
    EXPECT_THAT(takeSent(), ElementsAre());
}

TEST_F(CallsTab, EndingACallHangsUpAndClearsTheRinging) {
    connect();
    store->incomingCallInfo.set(IncomingCallInfo{.number = QStringLiteral("1")});
    view.isSpeakerOn = true;
    view.isMuted = true;
    view.endCall();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"hangup_call"})"));
    EXPECT_FALSE(store->incomingCallInfo.get().has_value());
    EXPECT_FALSE(view.isSpeakerOn || view.isMuted);
}

TEST_F(CallsTab, DurationsHaveAsManyMinutesAsTheyTake) {
    EXPECT_EQ(SettingsView::formatDuration(0), QStringLiteral("00:00"));
    EXPECT_EQ(SettingsView::formatDuration(65), QStringLiteral("01:05"));
    EXPECT_EQ(SettingsView::formatDuration(36'000), QStringLiteral("600:00"));
}

TEST_F(CallsTab, TheLogIsShownAsThePhoneSendsIt) {
    reportCalls({{.number = QStringLiteral("1"), .date = 1}, {.number = QStringLiteral("2"), .date = 2}});
    EXPECT_THAT(column(*view.callListModel(), CallListModel::NumberRole), ElementsAre("1", "2"));
    reportCalls({});
    EXPECT_EQ(view.callListModel()->count(), 0);
}

TEST_F(CallsTab, ANameThatTheLogBringsIsShownEverywhere) {
    reportSms({{.address = QStringLiteral("1"), .date = 1}});
    store->add({.id = QUuid::createUuid(), .title = QStringLiteral("1")});
    view.openConversation(QStringLiteral("1"));
    std::vector<std::string> conversationChanges;
    std::vector<std::string> notificationChanges;
    recordChanges(*view.filteredConversations(), conversationChanges);
    recordChanges(*view.notificationsTab()->items(), notificationChanges);
    reportCalls({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    EXPECT_THAT(conversationChanges, ElementsAre("change 0-0"));
    EXPECT_THAT(notificationChanges, ElementsAre("change 0-0"));
    EXPECT_THAT(column(*view.filteredConversations(), ConversationListModel::ShownNameRole),
                ElementsAre("Ann"));
    EXPECT_THAT(column(*view.notificationsTab()->items(), NotifListModel::ShownTitleRole),
                ElementsAre("Ann"));
    EXPECT_EQ(view.threadName(), QStringLiteral("Ann"));
}

TEST_F(DialerSims, AreShownFromTwoSimsOn) {
    EXPECT_FALSE(view.showsDialerSims());
    store->availableSIMs.set({{.slot = 3}});
    EXPECT_FALSE(view.showsDialerSims());
    EXPECT_EQ(view.selectedSimSlot(), 3);
    store->availableSIMs.set({{.slot = 3}, {.slot = 4}});
    EXPECT_TRUE(view.showsDialerSims());
}

TEST_F(DialerSims, AreAlwaysTheSlotsZeroAndOne) {
    store->availableSIMs.set({{.slot = 3}, {.slot = 4}, {.slot = 5}});
    EXPECT_EQ(view.dialerSimIndex(), -1);
    view.setDialerSimIndex(1);
    EXPECT_EQ(view.selectedSimSlot(), 1);
    EXPECT_EQ(view.dialerSimIndex(), 1);
    view.setDialerSimIndex(2);
    EXPECT_EQ(view.selectedSimSlot(), 1);
}
