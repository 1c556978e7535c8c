#include "messages/SendSmsTab.h"
#include "fakes/SmsRecords.h"
#include "fakes/TestPhone.h"
#include "messages/ContactNames.h"
#include "messages/MessageDates.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Messages : testing::Test, TestPhone {
    [[nodiscard]] QStringList listed() {
        return column(*tab.filteredConversations(), ConversationListModel::DisplayAddressRole);
    }
    [[nodiscard]] QStringList thread() { return column(*tab.activeMessages(), MessageListModel::BodyRole); }

    void reportCalls(const QList<CallRecord>& log) {
        names.setCallLog(log);
        tab.namesChanged();
    }

    ContactNames names;
    Sims sims{*store};
    SendSmsTab tab{fake.platform, *server, names, sims};
};

using SearchField = Messages;
using Thread = Messages;
using Sending = Messages;

} // namespace

TEST_F(Messages, AskForBothLogsOnEachAppearance) {
    connect();
    tab.appeared();
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"get_sms_history"})", R"({"action":"get_call_history"})"));
}

TEST_F(Messages, TheRefreshButtonAsksForMessagesAlone) {
    connect();
    tab.requestSmsHistory();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"get_sms_history"})"));
}

TEST_F(Messages, WithoutMessagesAndSearchSaysSo) {
    EXPECT_TRUE(tab.showsNoMessages());
    tab.setContactQuery(QStringLiteral("a"));
    EXPECT_FALSE(tab.showsNoMessages());
    tab.setContactQuery({});
    const auto told = countSignals(tab, &SendSmsTab::showsNoMessagesChanged);
    tab.setPhoneSmsLog({sms("1", 1)});
    EXPECT_FALSE(tab.showsNoMessages());
    EXPECT_EQ(*told, 1);
}

TEST_F(SearchField, NarrowsTheConversations) {
    tab.setPhoneSmsLog({sms("1", 1, "alpha"), sms("2", 2, "beta")});
    EXPECT_THAT(listed(), ElementsAre("2", "1"));
    tab.setContactQuery(QStringLiteral("ALPHA"));
    EXPECT_THAT(listed(), ElementsAre("1"));
    tab.setContactQuery(QStringLiteral("  "));
    EXPECT_THAT(listed(), ElementsAre("2", "1"));
}

TEST_F(SearchField, NarrowsALogThatComesLater) {
    tab.setContactQuery(QStringLiteral("alpha"));
    tab.setPhoneSmsLog({sms("1", 1, "alpha"), sms("2", 2, "beta")});
    EXPECT_THAT(listed(), ElementsAre("1"));
}

TEST_F(SearchField, KnowsNamesOfACallLogThatComesLater) {
    tab.setPhoneSmsLog({sms("1", 1), sms("2", 2)});
    tab.setContactQuery(QStringLiteral("ann"));
    EXPECT_THAT(listed(), ElementsAre());
    reportCalls({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    EXPECT_THAT(listed(), ElementsAre("1"));
}

TEST_F(SearchField, LettersWithoutAMatchShowNothing) {
    tab.setPhoneSmsLog({sms("1", 1)});
    tab.setContactQuery(QStringLiteral("abc"));
    EXPECT_THAT(listed(), ElementsAre());
    EXPECT_FALSE(tab.looksNumeric());
    EXPECT_FALSE(tab.showsNewNumberRow());
}

TEST_F(SearchField, OffersANewNumberFromTheFirstDigitOnAboveWhatMatches) {
    tab.setPhoneSmsLog({sms("12", 1), sms("3", 2)});
    tab.setContactQuery(QStringLiteral("1"));
    EXPECT_TRUE(tab.showsNewNumberRow());
    EXPECT_THAT(listed(), ElementsAre("12"));
}

TEST_F(SearchField, APlusSignAloneIsNoNumber) {
    tab.setContactQuery(QStringLiteral("+"));
    EXPECT_FALSE(tab.looksNumeric());
    tab.setContactQuery(QStringLiteral("+ 4"));
    EXPECT_TRUE(tab.looksNumeric());
}

TEST_F(SearchField, SuggestionsWouldStartWithThreeDigitsOfANumber) {
    tab.setContactQuery(QStringLiteral("+12"));
    EXPECT_FALSE(tab.showSuggestions());
    tab.setContactQuery(QStringLiteral("+1 2-3"));
    EXPECT_TRUE(tab.showSuggestions());
    tab.setContactQuery(QStringLiteral("1 23"));
    EXPECT_FALSE(tab.showSuggestions());
}

TEST_F(SearchField, TellsOfEachNewValueOnce) {
    const auto told = countSignals(tab, &SendSmsTab::contactQueryChanged);
    tab.setContactQuery(QStringLiteral("1"));
    tab.setContactQuery(QStringLiteral("1"));
    EXPECT_EQ(*told, 1);
}

TEST_F(Messages, TheirDatesAreShownAfreshWhenTheDayMayHaveChanged) {
    fake.clock.time = 1'700'000'000;
    tab.setPhoneSmsLog({sms("1", fake.clock.time * 1000)});
    std::vector<std::string> changes;
    recordChanges(*tab.filteredConversations(), changes);
    fake.clock.time += 86'400;
    tab.refreshDates();
    EXPECT_THAT(changes, ElementsAre("change 0-0"));
    EXPECT_THAT(column(*tab.filteredConversations(), ConversationListModel::RelativeDateRole),
                ElementsAre("Yesterday"));
}

TEST_F(Messages, TheirNamesAreThoseOfTheCallLog) {
    tab.setPhoneSmsLog({sms("1", 1)});
    tab.openConversation(QStringLiteral("1"));
    std::vector<std::string> changes;
    recordChanges(*tab.filteredConversations(), changes);
    const auto told = countSignals(tab, &SendSmsTab::threadNameChanged);
    reportCalls({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    EXPECT_THAT(changes, ElementsAre("change 0-0"));
    EXPECT_THAT(column(*tab.filteredConversations(), ConversationListModel::ShownNameRole),
                ElementsAre("Ann"));
    EXPECT_EQ(tab.threadName(), QStringLiteral("Ann"));
    EXPECT_EQ(*told, 1);
}

TEST_F(Messages, AMessageCanBeCopied) {
    tab.copyMessage(QStringLiteral("Hi"));
    EXPECT_THAT(fake.pasteboard.calls, ElementsAre("clear", "set:Hi"));
}

TEST_F(Messages, KeepWhatNoControlShowsAsItWas) {
    EXPECT_TRUE(tab.selectedRecipients.isEmpty());
    EXPECT_EQ(tab.smsBody + tab.smsStatus, QString());
    EXPECT_EQ(tab.smsStatusColor, QStringLiteral("secondary"));
}

TEST_F(Thread, NoneIsOpenAtFirst) {
    EXPECT_FALSE(tab.hasActiveRecipient());
    EXPECT_EQ(tab.threadName(), QString());
    EXPECT_FALSE(tab.showsThreadAddress());
    tab.setPhoneSmsLog({sms("1", 1)});
    EXPECT_THAT(thread(), ElementsAre());
}

TEST_F(Thread, ShowsItsMessagesOldestFirst) {
    tab.setPhoneSmsLog({sms("+12025550123", 2, "b"), sms("9", 3, "x"), sms("2025550123", 1, "a")});
    tab.openConversation(QStringLiteral("+12025550123"));
    EXPECT_EQ(tab.activeRecipient(), QStringLiteral("+12025550123"));
    EXPECT_THAT(thread(), ElementsAre("a", "b"));
}

TEST_F(Thread, OfAConversationHasItsNameWithTheAddressBelow) {
    tab.setPhoneSmsLog({sms("+12025550123", 1, "", QStringLiteral("Ann"))});
    tab.openConversation(QStringLiteral("+12025550123"));
    EXPECT_EQ(tab.threadName(), QStringLiteral("Ann"));
    EXPECT_TRUE(tab.showsThreadAddress());
}

TEST_F(Thread, UnderAnotherSpellingHasNotTheConversationsName) {
    tab.setPhoneSmsLog({sms("+12025550123", 1, "", QStringLiteral("Ann"))});
    tab.openConversation(QStringLiteral("2025550123"));
    EXPECT_EQ(tab.threadName(), QStringLiteral("2025550123"));
    EXPECT_FALSE(tab.showsThreadAddress());
    EXPECT_EQ(tab.activeMessages()->count(), 1);
}

TEST_F(Thread, OfANewNumberIsEmptyAndNamedByIt) {
    tab.setContactQuery(QStringLiteral(" +49 1 "));
    tab.openNewNumber();
    EXPECT_EQ(tab.activeRecipient(), QStringLiteral(" +49 1 ")) << "exactly as typed";
    EXPECT_EQ(tab.contactQuery(), QString());
    EXPECT_THAT(thread(), ElementsAre());
    EXPECT_EQ(tab.threadName(), QStringLiteral(" +49 1 "));
    EXPECT_FALSE(tab.showsThreadAddress());
}

TEST_F(Thread, OfANewNumberInTheCallLogHasItsName) {
    reportCalls({{.number = QStringLiteral("0491"), .name = QStringLiteral("Ann")}});
    tab.setContactQuery(QStringLiteral("0491"));
    tab.openNewNumber();
    EXPECT_EQ(tab.threadName(), QStringLiteral("Ann"));
    EXPECT_TRUE(tab.showsThreadAddress());
}

TEST_F(Thread, IsReplacedByANewLog) {
    tab.setPhoneSmsLog({sms("1", 1, "a")});
    tab.openConversation(QStringLiteral("1"));
    const auto told = countSignals(tab, &SendSmsTab::threadNameChanged);
    tab.setPhoneSmsLog({sms("1", 1, "a", QStringLiteral("Ann")), sms("1", 2, "b")});
    EXPECT_THAT(thread(), ElementsAre("a", "b"));
    EXPECT_EQ(tab.threadName(), QStringLiteral("Ann"));
    EXPECT_EQ(*told, 1);
    tab.setPhoneSmsLog({});
    EXPECT_THAT(thread(), ElementsAre());
    EXPECT_TRUE(tab.hasActiveRecipient());
}

TEST_F(Thread, AnotherOneLeavesTheDraft) {
    tab.openConversation(QStringLiteral("1"));
    tab.setChatText(QStringLiteral("draft"));
    tab.openConversation(QStringLiteral("2"));
    EXPECT_EQ(tab.chatText(), QStringLiteral("draft"));
}

TEST_F(Sending, SendsTheDigitsAndShowsTheMessageAtOnce) {
    connect();
    tab.setPhoneSmsLog({sms("+1 202 555 0123", 1, "old")});
    tab.openConversation(QStringLiteral("+1 202 555 0123"));
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"send_sms","body":"Hi","number":"12025550123","simSlot":0})"));
    EXPECT_THAT(thread(), ElementsAre("old", "Hi"));
    EXPECT_EQ(tab.chatText(), QString());

    const auto copy = tab.phoneSmsLog().last();
    EXPECT_EQ(copy.address, QStringLiteral("+1 202 555 0123")) << "as it was opened";
    EXPECT_EQ(copy.date, fake.clock.time * 1000);
    EXPECT_EQ(copy.type, 2);
    EXPECT_FALSE(copy.name.has_value());
    EXPECT_THAT(column(*tab.activeMessages(), MessageListModel::TimeTextRole).last(),
                formatDate(fake.clock.time * 1000));
    EXPECT_THAT(column(*tab.filteredConversations(), ConversationListModel::LastBodyRole), ElementsAre("Hi"));
}

TEST_F(Sending, NothingIsSentWithoutAThreadOrADraft) {
    connect();
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    tab.setChatText({});
    tab.openConversation(QStringLiteral("1"));
    tab.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre());
    EXPECT_TRUE(tab.phoneSmsLog().isEmpty());
}

TEST_F(Sending, ADraftOfBlanksIsSent) {
    connect();
    tab.openConversation(QStringLiteral("1"));
    tab.setChatText(QStringLiteral("  "));
    tab.sendChatMessage();
    EXPECT_EQ(takeSent().size(), 1U);
}

TEST_F(Sending, ASenderOfLettersHasAnEmptyNumber) {
    connect();
    tab.openConversation(QStringLiteral("MyBank"));
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"send_sms","body":"Hi","number":"","simSlot":0})"));
    EXPECT_THAT(thread(), ElementsAre("Hi"));
}

TEST_F(Sending, WithoutAPhoneTheMessageIsShownAllTheSame) {
    tab.openConversation(QStringLiteral("1"));
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    EXPECT_THAT(thread(), ElementsAre("Hi"));
    EXPECT_EQ(tab.chatText(), QString());
}

TEST_F(Sending, ACopyThatThePhonesLogLacksDisappears) {
    tab.setPhoneSmsLog({sms("1", 1, "old")});
    tab.openConversation(QStringLiteral("1"));
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    tab.setPhoneSmsLog({sms("1", 1, "old")});
    EXPECT_THAT(thread(), ElementsAre("old"));
}

TEST_F(Sending, GoesOutFromTheSelectedSim) {
    connect();
    store->availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    tab.openConversation(QStringLiteral("1"));
    tab.setChatText(QStringLiteral("Hi"));
    tab.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"send_sms","body":"Hi","number":"1","simSlot":3})"));
}
