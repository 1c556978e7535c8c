#include "messages/CallsTab.h"
#include "fakes/TestPhone.h"
#include "messages/ContactNames.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Calls : testing::Test, TestPhone {
    void reportCalls(const QList<CallRecord>& log) {
        names.setCallLog(log);
        tab.setPhoneCallLog(log);
    }

    ContactNames names;
    Sims sims{*store};
    CallsTab tab{fake.platform, *server, *store, names, sims};
    std::vector<PreparedCall> announced;
    InternalNotifications::Observation observation = fake.internalNotifications.addObserver(
        InternalNotifications::prepareActiveCall,
        [this](const auto& object) { announced.push_back(std::get<PreparedCall>(object)); });
};

using DialPad = Calls;
using StartCall = Calls;

} // namespace

TEST_F(DialPad, HasTwelveButtonsRowByRow) {
    QStringList texts;
    for (const auto& button : CallsTab::dialButtons()) {
        texts.append(button.toMap()[QStringLiteral("main")].toString() + u':' +
                     button.toMap()[QStringLiteral("letters")].toString());
    }
    EXPECT_THAT(texts, ElementsAre("1:", "2:A B C", "3:D E F", "4:G H I", "5:J K L", "6:M N O", "7:P Q R S",
                                   "8:T U V", "9:W X Y Z", "*:", "0:+", "#:"));
}

TEST_F(DialPad, ItsButtonsAppendAndDelete) {
    tab.removeLastFromDialpadNumber();
    EXPECT_EQ(tab.dialpadNumber(), QString());
    tab.appendToDialpadNumber(QStringLiteral("1"));
    tab.appendToDialpadNumber(QStringLiteral("#"));
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("1#"));
    tab.removeLastFromDialpadNumber();
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("1"));
}

TEST_F(DialPad, TakesTheKeyboard) {
    connect();
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_Asterisk, QStringLiteral("*")));
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_1, QStringLiteral("1")));
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_2, QStringLiteral("2")));
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_Backspace, QStringLiteral("\b")));
    EXPECT_FALSE(tab.dialpadKeyPressed(Qt::Key_A, QStringLiteral("a")));
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("*1"));
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_Return, QStringLiteral("\r")));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"*1","simSlot":0})"));
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("*1"));
}

TEST_F(DialPad, ReturnOnAnEmptyDisplayDoesNothing) {
    connect();
    EXPECT_TRUE(tab.dialpadKeyPressed(Qt::Key_Return, QStringLiteral("\r")));
    EXPECT_THAT(takeSent(), ElementsAre());
    EXPECT_TRUE(announced.empty());
}

TEST_F(StartCall, CallsTheNumberAsItStandsAndAnnouncesTheCall) {
    connect();
    reportCalls({{.number = QStringLiteral("491"), .name = QStringLiteral("Ann")}});
    sims.setSelectedSimSlot(4);
    tab.appendToDialpadNumber(QStringLiteral("4*91#"));
    tab.startCall();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"4*91#","simSlot":4})"));
    EXPECT_THAT(announced,
                ElementsAre(PreparedCall{.number = QStringLiteral("4*91#"), .name = QStringLiteral("Ann")}));
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("4*91#"));
}

TEST_F(StartCall, ANumberThatNobodyKnowsIsItsOwnName) {
    tab.appendToDialpadNumber(QStringLiteral("7"));
    tab.startCall();
    EXPECT_THAT(announced,
                ElementsAre(PreparedCall{.number = QStringLiteral("7"), .name = QStringLiteral("7")}))
        << "without a phone, too";
}

TEST_F(StartCall, ALogRowRedialsAtOnce) {
    connect();
    tab.redial(QStringLiteral("+49 1"));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"make_call","number":"+49 1","simSlot":0})"));
    EXPECT_EQ(tab.dialpadNumber(), QStringLiteral("+49 1"));
}

TEST_F(StartCall, ALogRowWithoutANumberCallsNobody) {
    connect();
    tab.redial(QString());
    EXPECT_THAT(takeSent(), ElementsAre());
}

TEST_F(Calls, EndingACallHangsUpAndClearsTheRinging) {
    connect();
    store->incomingCallInfo.set(IncomingCallInfo{.number = QStringLiteral("1")});
    tab.isSpeakerOn = true;
    tab.isMuted = true;
    tab.endCall();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"hangup_call"})"));
    EXPECT_FALSE(store->incomingCallInfo.get().has_value());
    EXPECT_FALSE(tab.isSpeakerOn || tab.isMuted);
}

TEST_F(Calls, DurationsHaveAsManyMinutesAsTheyTake) {
    EXPECT_EQ(CallsTab::formatDuration(0), QStringLiteral("00:00"));
    EXPECT_EQ(CallsTab::formatDuration(65), QStringLiteral("01:05"));
    EXPECT_EQ(CallsTab::formatDuration(36'000), QStringLiteral("600:00"));
}

TEST_F(Calls, TheLogIsShownAsThePhoneSendsIt) {
    reportCalls({{.number = QStringLiteral("1"), .date = 1}, {.number = QStringLiteral("2"), .date = 2}});
    EXPECT_THAT(column(*tab.callListModel(), CallListModel::NumberRole), ElementsAre("1", "2"));
    reportCalls({});
    EXPECT_EQ(tab.callListModel()->count(), 0);
}

TEST_F(Calls, ANewLogShowsAllNamesAfresh) {
    reportCalls({{.number = QStringLiteral("1"), .date = 1}});
    std::vector<std::string> changes;
    recordChanges(*tab.callListModel(), changes);
    reportCalls({{.number = QStringLiteral("2"), .date = 2}, {.number = QStringLiteral("1"), .date = 1}});
    EXPECT_THAT(changes, ElementsAre("insert 0-0", "change 0-1"));
}

TEST_F(Calls, TheirDatesAreShownAfreshWhenTheDayMayHaveChanged) {
    fake.clock.time = 1'700'000'000;
    reportCalls({{.number = QStringLiteral("1"), .date = fake.clock.time * 1000}});
    std::vector<std::string> changes;
    recordChanges(*tab.callListModel(), changes);
    fake.clock.time += 86'400;
    tab.refreshDates();
    EXPECT_THAT(changes, ElementsAre("change 0-0"));
    EXPECT_THAT(column(*tab.callListModel(), CallListModel::RelativeDateRole), ElementsAre("Yesterday"));
}

TEST_F(Calls, KeepWhatNoControlShowsAsItWas) {
    EXPECT_FALSE(tab.isSpeakerOn || tab.isMuted);
    EXPECT_EQ(tab.timer, nullptr);
}
