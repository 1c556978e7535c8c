#include "fakes/FakePlatform.h"
#include "fakes/ModelChanges.h"
#include "fakes/SmsRecords.h"
#include "messages/CallListModel.h"
#include "messages/ContactNames.h"
#include "messages/ConversationListModel.h"
#include "messages/MessageDates.h"
#include "messages/MessageListModel.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

constexpr double now = 1'700'000'000; ///< seconds
constexpr double today = now * 1000;
constexpr double day = 86'400'000;

struct Models : testing::Test {
    Models() {
        recordChanges(conversations, changes);
        recordChanges(messages, changes);
        recordChanges(calls, changes);
    }

    std::vector<std::string> takeChanges() { return std::exchange(changes, {}); }

    FakeClock clock;
    ContactNames names;
    ConversationListModel conversations{names, clock};
    MessageListModel messages;
    CallListModel calls{names, clock};
    std::vector<std::string> changes;
};

} // namespace

using ConversationList = Models;
using MessageList = Models;
using CallList = Models;

TEST_F(ConversationList, ShowsEachThread) {
    names.setCallLog({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann Bell")}});
    conversations.setConversations(conversationsOf({sms("+1", today, "Hi"), sms("2 34", today - day)}));
    EXPECT_THAT(column(conversations, ConversationListModel::DisplayAddressRole), ElementsAre("+1", "2 34"));
    EXPECT_THAT(column(conversations, ConversationListModel::ShownNameRole), ElementsAre("Ann Bell", "2 34"));
    EXPECT_THAT(column(conversations, ConversationListModel::InitialsRole), ElementsAre("AB", "23"));
    EXPECT_THAT(column(conversations, ConversationListModel::RelativeDateRole),
                ElementsAre(formatDate(today), "Yesterday"));
    EXPECT_THAT(column(conversations, ConversationListModel::LastBodyRole), ElementsAre("Hi", ""));
}

TEST_F(ConversationList, ShowsTheBeginningOfALongMessageAsOneLine) {
    conversations.setConversations(
        conversationsOf({sms("1", today, (" Two\n lines " + std::string(100'000, 'x')).c_str())}));
    const auto line = column(conversations, ConversationListModel::LastBodyRole).front();
    EXPECT_TRUE(line.startsWith(QStringLiteral("Two lines xxx"))) << line.toStdString();
    EXPECT_LE(line.size(), 300);
}

TEST_F(ConversationList, TakesTheNameButNotTheInitialsOfAMessage) {
    auto record = sms("123", today);
    record.name = QStringLiteral("Ann Bell");
    conversations.setConversations(conversationsOf({record}));
    EXPECT_THAT(column(conversations, ConversationListModel::ShownNameRole), ElementsAre("Ann Bell"));
    EXPECT_THAT(column(conversations, ConversationListModel::InitialsRole), ElementsAre("1"));
}

TEST_F(ConversationList, AnEmptyAddressHasAQuestionMark) {
    conversations.setConversations(conversationsOf({sms("", today)}));
    EXPECT_THAT(column(conversations, ConversationListModel::InitialsRole), ElementsAre("?"));
}

TEST_F(ConversationList, AThreadThatComesToTheTopLeavesTheOthersInPlace) {
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2), sms("3", 1)}));
    takeChanges();
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2), sms("3", 4, "new")}));
    EXPECT_THAT(takeChanges(), ElementsAre("remove 2-2", "insert 0-0"));
    EXPECT_THAT(column(conversations, ConversationListModel::LastBodyRole), ElementsAre("new", "", ""));
}

TEST_F(ConversationList, ANewMessageOfTheTopThreadChangesItsRow) {
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2)}));
    takeChanges();
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2), sms("1", 4)}));
    EXPECT_THAT(takeChanges(), ElementsAre("change 0-0"));
}

TEST_F(ConversationList, TheSameThreadsChangeNothing) {
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2)}));
    takeChanges();
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2)}));
    EXPECT_THAT(takeChanges(), ElementsAre());
}

TEST_F(ConversationList, RefreshingTellsOfAllRows) {
    conversations.refresh();
    EXPECT_THAT(takeChanges(), ElementsAre()) << "there is none";
    conversations.setConversations(conversationsOf({sms("1", 3), sms("2", 2)}));
    takeChanges();
    conversations.refresh();
    EXPECT_THAT(takeChanges(), ElementsAre("change 0-1"));
}

TEST_F(MessageList, ShowsEachMessage) {
    messages.showThread({sms("1", 0, "in", 1), sms("1", 60'000, "out", 2), sms("1", 60'000, "other", 5)});
    EXPECT_THAT(column(messages, MessageListModel::BodyRole), ElementsAre("in", "out", "other"));
    EXPECT_THAT(column(messages, MessageListModel::IsSentRole), ElementsAre("false", "true", "false"));
    EXPECT_THAT(column(messages, MessageListModel::TimeTextRole),
                ElementsAre(formatDate(0), formatDate(60'000), formatDate(60'000)));
}

TEST_F(MessageList, ANewMessageIsInsertedAndAGoneOneRemoved) {
    messages.showThread({sms("1", 1, "a"), sms("1", 2, "b"), sms("1", 3, "c")});
    takeChanges();
    messages.setMessages({sms("1", 2, "b"), sms("1", 3, "c"), sms("1", 4, "d")});
    EXPECT_THAT(takeChanges(), ElementsAre("remove 0-0", "insert 2-2"));
    EXPECT_THAT(column(messages, MessageListModel::BodyRole), ElementsAre("b", "c", "d"));
}

TEST_F(MessageList, MessagesOfOneMillisecondKeepTheirRows) {
    const QList<SmsRecord> twins{sms("1", 1, "a"), sms("1", 2, "b"), sms("1", 2, "c"), sms("1", 3, "d")};
    messages.showThread(twins);
    takeChanges();
    messages.setMessages(twins);
    EXPECT_THAT(takeChanges(), ElementsAre());
    messages.setMessages({twins[0], twins[2], twins[1], twins[3]});
    EXPECT_THAT(takeChanges(), ElementsAre("change 1-2"));
    messages.setMessages({twins[0], twins[2], twins[3]});
    EXPECT_THAT(takeChanges(), ElementsAre("remove 2-2"));
    EXPECT_THAT(column(messages, MessageListModel::BodyRole), ElementsAre("a", "c", "d"));
}

TEST_F(MessageList, AnotherThreadIsAReset) {
    messages.showThread({sms("1", 1)});
    takeChanges();
    messages.showThread({sms("2", 1)});
    EXPECT_THAT(takeChanges(), ElementsAre("reset"));
}

TEST_F(MessageList, ItsCountIsToldOnlyWhenItIsAnother) {
    const auto told = countSignals<CountedListModel>(messages, &CountedListModel::countChanged);
    messages.showThread({sms("1", 1)});
    messages.showThread({sms("2", 1)});
    messages.setMessages({sms("2", 2)});
    EXPECT_EQ(*told, 1);
    messages.setMessages({});
    EXPECT_EQ(*told, 2);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MessageList, AListWithLittleLeftOfItIsReset) {
    QList<SmsRecord> all;
    QList<SmsRecord> everySecond;
    for (int i = 0; i < 1000; ++i) {
        all.append(sms("1", i));
        if (i % 2 == 0) {
            everySecond.append(all.last());
        }
    }
    messages.showThread(all);
    takeChanges();
    messages.setMessages(everySecond);
    EXPECT_THAT(takeChanges(), ElementsAre("reset"));
    EXPECT_EQ(messages.rowCount(), 500);
}

TEST_F(CallList, ShowsEachCallInThePhonesOrder) {
    names.setCallLog({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    calls.setCalls({{.number = QStringLiteral("1"), .name = QStringLiteral(""), .date = 1, .type = 3},
                    {.number = QStringLiteral("2"), .name = QStringLiteral("Bob"), .date = today, .type = 2},
                    {.number = QStringLiteral("3"), .date = today - day, .type = 1},
                    {.number = QStringLiteral("4"), .date = today, .type = 77}});
    EXPECT_THAT(column(calls, CallListModel::NumberRole), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(column(calls, CallListModel::ShownNameRole), ElementsAre("Ann", "Bob", "3", "4"));
    EXPECT_THAT(column(calls, CallListModel::IsMissedRole), ElementsAre("true", "false", "false", "false"));
    EXPECT_THAT(column(calls, CallListModel::IsOutgoingRole), ElementsAre("false", "true", "false", "false"));
    EXPECT_EQ(column(calls, CallListModel::RelativeDateRole)[2], QStringLiteral("Yesterday"));
}

TEST_F(CallList, ANewCallPushesTheOldestOut) {
    const CallRecord oldest{.number = QStringLiteral("1"), .date = 1};
    const CallRecord older{.number = QStringLiteral("2"), .date = 2};
    const CallRecord newest{.number = QStringLiteral("3"), .date = 3};
    calls.setCalls({older, oldest});
    takeChanges();
    calls.setCalls({newest, older});
    EXPECT_THAT(takeChanges(), ElementsAre("remove 1-1", "insert 0-0"));
}

TEST_F(Models, AnInvalidIndexHasNoData) {
    EXPECT_FALSE(conversations.data({}, ConversationListModel::ShownNameRole).isValid());
    EXPECT_FALSE(messages.data({}, MessageListModel::BodyRole).isValid());
    EXPECT_FALSE(calls.data({}, CallListModel::NumberRole).isValid());
}

TEST_F(Models, NameTheirRolesForViews) {
    EXPECT_EQ(conversations.roleNames().value(ConversationListModel::RelativeDateRole), "relativeDate");
    EXPECT_EQ(messages.roleNames().value(MessageListModel::IsSentRole), "isSent");
    EXPECT_EQ(calls.roleNames().value(CallListModel::IsMissedRole), "isMissed");
}

TEST_F(MessageList, ShowsALongMessageUpToAPointAndHasTheRest) {
    messages.setMessages({sms("1", 1, std::string(100'000, 'x').c_str()), sms("1", 2, "short")});
    const auto sizeOf = [this](int row, int role) {
        return messages.data(messages.index(row), role).toString().size();
    };
    EXPECT_EQ(sizeOf(0, MessageListModel::ShownBodyRole), MessageListModel::mostShown);
    EXPECT_EQ(sizeOf(0, MessageListModel::BodyRole), 100'000);
    EXPECT_EQ(sizeOf(1, MessageListModel::ShownBodyRole), 5);
    EXPECT_THAT(column(messages, MessageListModel::IsCutRole), ElementsAre("true", "false"));
}
