#include "fakes/TestView.h"
#include "messages/MessageDates.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

SmsRecord sms(const char* address, double date, const char* body = "", std::optional<QString> name = {}) {
    return {.address = QString::fromUtf8(address),
            .name = std::move(name),
            .body = QString::fromUtf8(body),
            .date = date};
}

struct MessagesTab : testing::Test, TestView {
    [[nodiscard]] QStringList listed() {
        return column(*view.filteredConversations(), ConversationListModel::DisplayAddressRole);
    }
    [[nodiscard]] QStringList thread() { return column(*view.activeMessages(), MessageListModel::BodyRole); }
};

using SearchField = MessagesTab;
using Thread = MessagesTab;
using Sending = MessagesTab;
using Sims = MessagesTab;

} // namespace

TEST_F(MessagesTab, AskForBothLogsOnEachAppearance) {
    connect();
    view.messagesTabAppeared();
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"get_sms_history"})", R"({"action":"get_call_history"})"));
}

TEST_F(MessagesTab, TheRefreshButtonAsksForMessagesAlone) {
    connect();
    view.requestSmsHistory();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"get_sms_history"})"));
}

TEST_F(MessagesTab, WithoutMessagesAndSearchSaysSo) {
    EXPECT_TRUE(view.showsNoMessages());
    view.setContactQuery(QStringLiteral("a"));
    EXPECT_FALSE(view.showsNoMessages());
    view.setContactQuery({});
    const auto told = countSignals(view, &SettingsView::showsNoMessagesChanged);
    reportSms({sms("1", 1)});
    EXPECT_FALSE(view.showsNoMessages());
    EXPECT_EQ(*told, 1);
}

TEST_F(SearchField, NarrowsTheConversations) {
    reportSms({sms("1", 1, "alpha"), sms("2", 2, "beta")});
    EXPECT_THAT(listed(), ElementsAre("2", "1"));
    view.setContactQuery(QStringLiteral("ALPHA"));
    EXPECT_THAT(listed(), ElementsAre("1"));
    view.setContactQuery(QStringLiteral("  "));
    EXPECT_THAT(listed(), ElementsAre("2", "1"));
}

TEST_F(SearchField, NarrowsALogThatComesLater) {
    view.setContactQuery(QStringLiteral("alpha"));
    reportSms({sms("1", 1, "alpha"), sms("2", 2, "beta")});
    EXPECT_THAT(listed(), ElementsAre("1"));
}

TEST_F(SearchField, KnowsNamesOfACallLogThatComesLater) {
    reportSms({sms("1", 1), sms("2", 2)});
    view.setContactQuery(QStringLiteral("ann"));
    EXPECT_THAT(listed(), ElementsAre());
    reportCalls({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    EXPECT_THAT(listed(), ElementsAre("1"));
}

TEST_F(SearchField, LettersWithoutAMatchShowNothing) {
    reportSms({sms("1", 1)});
    view.setContactQuery(QStringLiteral("abc"));
    EXPECT_THAT(listed(), ElementsAre());
    EXPECT_FALSE(view.looksNumeric());
    EXPECT_FALSE(view.showsNewNumberRow());
}

TEST_F(SearchField, OffersANewNumberFromTheFirstDigitOnAboveWhatMatches) {
    reportSms({sms("12", 1), sms("3", 2)});
    view.setContactQuery(QStringLiteral("1"));
    EXPECT_TRUE(view.showsNewNumberRow());
    EXPECT_THAT(listed(), ElementsAre("12"));
}

TEST_F(SearchField, APlusSignAloneIsNoNumber) {
    view.setContactQuery(QStringLiteral("+"));
    EXPECT_FALSE(view.looksNumeric());
    view.setContactQuery(QStringLiteral("+ 4"));
    EXPECT_TRUE(view.looksNumeric());
}

TEST_F(SearchField, SuggestionsWouldStartWithThreeDigitsOfANumber) {
    view.setContactQuery(QStringLiteral("+12"));
    EXPECT_FALSE(view.showSuggestions());
    view.setContactQuery(QStringLiteral("+1 2-3"));
    EXPECT_TRUE(view.showSuggestions());
    view.setContactQuery(QStringLiteral("1 23"));
    EXPECT_FALSE(view.showSuggestions());
}

TEST_F(SearchField, TellsOfEachNewValueOnce) {
    const auto told = countSignals(view, &SettingsView::contactQueryChanged);
    view.setContactQuery(QStringLiteral("1"));
    view.setContactQuery(QStringLiteral("1"));
    EXPECT_EQ(*told, 1);
}

TEST_F(Thread, NoneIsOpenAtFirst) {
    EXPECT_FALSE(view.hasActiveRecipient());
    EXPECT_EQ(view.threadName(), QString());
    EXPECT_FALSE(view.showsThreadAddress());
    reportSms({sms("1", 1)});
    EXPECT_THAT(thread(), ElementsAre());
}

TEST_F(Thread, ShowsItsMessagesOldestFirst) {
    reportSms({sms("+12025550123", 2, "b"), sms("9", 3, "x"), sms("2025550123", 1, "a")});
    view.openConversation(QStringLiteral("+12025550123"));
    EXPECT_EQ(view.activeRecipient(), QStringLiteral("+12025550123"));
    EXPECT_THAT(thread(), ElementsAre("a", "b"));
}

TEST_F(Thread, OfAConversationHasItsNameWithTheAddressBelow) {
    reportSms({sms("+12025550123", 1, "", QStringLiteral("Ann"))});
    view.openConversation(QStringLiteral("+12025550123"));
    EXPECT_EQ(view.threadName(), QStringLiteral("Ann"));
    EXPECT_TRUE(view.showsThreadAddress());
}

TEST_F(Thread, UnderAnotherSpellingHasNotTheConversationsName) {
    reportSms({sms("+12025550123", 1, "", QStringLiteral("Ann"))});
    view.openConversation(QStringLiteral("2025550123"));
    EXPECT_EQ(view.threadName(), QStringLiteral("2025550123"));
    EXPECT_FALSE(view.showsThreadAddress());
    EXPECT_EQ(view.activeMessages()->count(), 1);
}

TEST_F(Thread, OfANewNumberIsEmptyAndNamedByIt) {
    view.setContactQuery(QStringLiteral(" +49 1 "));
    view.openNewNumber();
    EXPECT_EQ(view.activeRecipient(), QStringLiteral(" +49 1 ")) << "exactly as typed";
    EXPECT_EQ(view.contactQuery(), QString());
    EXPECT_THAT(thread(), ElementsAre());
    EXPECT_EQ(view.threadName(), QStringLiteral(" +49 1 "));
    EXPECT_FALSE(view.showsThreadAddress());
}

TEST_F(Thread, OfANewNumberInTheCallLogHasItsName) {
    reportCalls({{.number = QStringLiteral("0491"), .name = QStringLiteral("Ann")}});
    view.setContactQuery(QStringLiteral("0491"));
    view.openNewNumber();
    EXPECT_EQ(view.threadName(), QStringLiteral("Ann"));
    EXPECT_TRUE(view.showsThreadAddress());
}

TEST_F(Thread, IsReplacedByANewLog) {
    reportSms({sms("1", 1, "a")});
    view.openConversation(QStringLiteral("1"));
    const auto told = countSignals(view, &SettingsView::threadNameChanged);
    reportSms({sms("1", 1, "a", QStringLiteral("Ann")), sms("1", 2, "b")});
    EXPECT_THAT(thread(), ElementsAre("a", "b"));
    EXPECT_EQ(view.threadName(), QStringLiteral("Ann"));
    EXPECT_EQ(*told, 1);
    reportSms({});
    EXPECT_THAT(thread(), ElementsAre());
    EXPECT_TRUE(view.hasActiveRecipient());
}

TEST_F(Thread, AnotherOneLeavesTheDraft) {
    view.openConversation(QStringLiteral("1"));
    view.setChatText(QStringLiteral("draft"));
    view.openConversation(QStringLiteral("2"));
    EXPECT_EQ(view.chatText(), QStringLiteral("draft"));
}

TEST_F(Sending, SendsTheDigitsAndShowsTheMessageAtOnce) {
    connect();
    reportSms({sms("+1 202 555 0123", 1, "old")});
    view.openConversation(QStringLiteral("+1 202 555 0123"));
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    EXPECT_THAT(takeSent(),
                ElementsAre(R"({"action":"send_sms","body":"Hi","number":"12025550123","simSlot":0})"));
    EXPECT_THAT(thread(), ElementsAre("old", "Hi"));
    EXPECT_EQ(view.chatText(), QString());

    const auto copy = view.phoneSmsLog().last();
    EXPECT_EQ(copy.address, QStringLiteral("+1 202 555 0123")) << "as it was opened";
    EXPECT_EQ(copy.date, fake.clock.time * 1000);
    EXPECT_EQ(copy.type, 2);
    EXPECT_FALSE(copy.name.has_value());
    EXPECT_THAT(column(*view.activeMessages(), MessageListModel::TimeTextRole).last(),
                formatDate(fake.clock.time * 1000));
    EXPECT_THAT(column(*view.filteredConversations(), ConversationListModel::LastBodyRole),
                ElementsAre("Hi"));
}

TEST_F(Sending, NothingIsSentWithoutAThreadOrADraft) {
    connect();
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    view.setChatText({});
    view.openConversation(QStringLiteral("1"));
    view.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre());
    EXPECT_TRUE(view.phoneSmsLog().isEmpty());
}

TEST_F(Sending, ADraftOfBlanksIsSent) {
    connect();
    view.openConversation(QStringLiteral("1"));
    view.setChatText(QStringLiteral("  "));
    view.sendChatMessage();
    EXPECT_EQ(takeSent().size(), 1U);
}

TEST_F(Sending, ASenderOfLettersHasAnEmptyNumber) {
    connect();
    view.openConversation(QStringLiteral("MyBank"));
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"send_sms","body":"Hi","number":"","simSlot":0})"));
    EXPECT_THAT(thread(), ElementsAre("Hi"));
}

TEST_F(Sending, WithoutAPhoneTheMessageIsShownAllTheSame) {
    view.openConversation(QStringLiteral("1"));
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    EXPECT_THAT(thread(), ElementsAre("Hi"));
    EXPECT_EQ(view.chatText(), QString());
}

TEST_F(Sending, ACopyThatThePhonesLogLacksDisappears) {
    reportSms({sms("1", 1, "old")});
    view.openConversation(QStringLiteral("1"));
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    reportSms({sms("1", 1, "old")});
    EXPECT_THAT(thread(), ElementsAre("old"));
}

TEST_F(Sims, TheFirstOneIsSelectedAtEachChangeOfTheList) {
    EXPECT_EQ(view.selectedSimSlot(), 0);
    store->availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(view.selectedSimSlot(), 3);
    EXPECT_THAT(view.simCarriers(), ElementsAre("A", "B"));
    view.setSelectedSimIndex(1);
    EXPECT_EQ(view.selectedSimSlot(), 5);
    store->availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(view.selectedSimSlot(), 5) << "the same list is no change";
    store->availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A2")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(view.selectedSimSlot(), 3);
}

TEST_F(Sims, AnEmptyListLeavesTheSelection) {
    store->availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    store->availableSIMs.set({});
    EXPECT_EQ(view.selectedSimSlot(), 3);
    EXPECT_EQ(view.selectedSimIndex(), -1);
    EXPECT_TRUE(view.simCarriers().isEmpty());
}

TEST_F(Sims, ThoseThatWereThereBeforeTheWindowAreNoChange) {
    store->availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    const SettingsView later(fake.platform, main, *server, *store);
    EXPECT_EQ(later.selectedSimSlot(), 0);
    EXPECT_THAT(later.simCarriers(), ElementsAre("A"));
}

TEST_F(Sims, MessagesGoOutFromTheSelectedOne) {
    connect();
    store->availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    view.openConversation(QStringLiteral("1"));
    view.setChatText(QStringLiteral("Hi"));
    view.sendChatMessage();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"send_sms","body":"Hi","number":"1","simSlot":3})"));
}

TEST_F(Sims, APlaceThatIsNotThereSelectsNothing) {
    store->availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    view.setSelectedSimIndex(1);
    view.setSelectedSimIndex(-1);
    EXPECT_EQ(view.selectedSimSlot(), 3);
}
