#include "messages/Conversations.h"
#include "fakes/SmsRecords.h"
#include "messages/ContactNames.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

std::vector<std::string> ids(const QList<Conversation>& conversations) {
    std::vector<std::string> texts;
    for (const auto& conversation : conversations) {
        texts.push_back(conversation.id.toStdString());
    }
    return texts;
}

std::vector<std::string> bodies(const QList<SmsRecord>& messages) {
    std::vector<std::string> texts;
    for (const auto& message : messages) {
        texts.push_back(message.body.toStdString());
    }
    return texts;
}

/// A log, the call log's names and what a search finds.
struct Search {
    [[nodiscard]] std::vector<std::string> operator()(const char* query) {
        return ids(conversations.filtered(QString::fromUtf8(query), names));
    }

    Conversations conversations;
    ContactNames names;
};

} // namespace

TEST(Conversations, OfAnEmptyLogAreNone) {
    Search search;
    search.conversations.setLog({});
    EXPECT_TRUE(search.conversations.conversations().isEmpty());
    EXPECT_THAT(search(""), ElementsAre());
    EXPECT_THAT(search("a"), ElementsAre());
}

TEST(Conversations, JoinAddressesThatDifferInTheCountryCode) {
    const auto threads =
        conversationsOf({sms("2025550123", 2), sms("+12025550123", 3), sms("0012025550123", 1)});
    ASSERT_THAT(ids(threads), ElementsAre("2025550123"));
    EXPECT_EQ(threads[0].displayAddress, QStringLiteral("+12025550123")) << "the newest message's form";
    EXPECT_THAT(threads[0].messages, ElementsAre(2, 0, 1)) << "oldest first";
    EXPECT_EQ(threads[0].lastMessage.date, 3);
}

TEST(Conversations, JoinNineDigitsWithAndWithoutAPlusSignButNotWithTen) {
    EXPECT_THAT(ids(conversationsOf({sms("123456789", 2), sms("+123456789", 1)})), ElementsAre("123456789"));
    EXPECT_THAT(ids(conversationsOf({sms("0123456789", 2), sms("123456789", 1)})),
                ElementsAre("0123456789", "123456789"));
}

TEST(Conversations, JoinSendersOfLettersWhateverTheCase) {
    EXPECT_THAT(ids(conversationsOf({sms("MyBank", 2), sms("MYBANK", 1)})), ElementsAre("mybank"));
}

TEST(Conversations, JoinSendersWithTheSameDigits) {
    EXPECT_THAT(ids(conversationsOf({sms("Taxi1", 2), sms("Bank1", 1)})), ElementsAre("1"));
}

TEST(Conversations, OfAnEmptyAddressHaveTheEmptyKey) {
    const auto threads = conversationsOf({sms("", 1)});
    ASSERT_EQ(threads.size(), 1);
    EXPECT_TRUE(threads[0].id.isEmpty());
}

TEST(Conversations, StandNewestFirst) {
    EXPECT_THAT(ids(conversationsOf({sms("1", 5), sms("2", 9), sms("1", 10), sms("3", 7)})),
                ElementsAre("1", "2", "3"));
}

TEST(Conversations, OfOneDateKeepTheLogsOrder) {
    const auto threads = conversationsOf({sms("7 7", 5, "a"), sms("77", 5, "b"), sms("8", 5)});
    ASSERT_THAT(ids(threads), ElementsAre("77", "8"));
    EXPECT_THAT(threads[0].messages, ElementsAre(0, 1));
    EXPECT_EQ(threads[0].lastMessage.body, QStringLiteral("b")) << "the last of the newest";
    EXPECT_EQ(threads[0].displayAddress, QStringLiteral("7 7")) << "the first of the newest";
}

TEST(Conversations, AreNamedByTheFirstRecordWithANameInTheLogsOrder) {
    const auto threads = conversationsOf(
        {sms("1", 1), sms("1", 3, "", QStringLiteral("Ann")), sms("1", 2, "", QStringLiteral("Bob"))});
    EXPECT_EQ(threads[0].contactName, QStringLiteral("Ann"));
    EXPECT_FALSE(conversationsOf({sms("1", 1)})[0].contactName.has_value());
}

TEST(Conversations, AnEmptyNameIsAName) {
    const auto threads =
        conversationsOf({sms("1", 1, "", QStringLiteral("")), sms("1", 2, "", QStringLiteral("Bob"))});
    ASSERT_TRUE(threads[0].contactName.has_value());
    EXPECT_TRUE(threads[0].contactName->isEmpty());
}

TEST(Conversations, GiveTheMessagesOfAnAddressHoweverItIsWritten) {
    Conversations conversations;
    conversations.setLog({sms("2025550123", 2, "b"), sms("9", 5, "x"), sms("+1 202 555 0123", 1, "a")});
    EXPECT_THAT(bodies(conversations.messages(QStringLiteral("(202) 555-0123"))), ElementsAre("a", "b"));
    EXPECT_THAT(bodies(conversations.messages(QStringLiteral("10"))), ElementsAre());
}

TEST(Conversations, TakeAnAppendedRecordIn) {
    Conversations conversations;
    conversations.setLog({sms("1", 5, "a"), sms("2", 6, "b")});
    conversations.append(sms("+1", 7, "c"));
    EXPECT_THAT(ids(conversations.conversations()), ElementsAre("1", "2"));
    EXPECT_EQ(conversations.conversations()[0].displayAddress, QStringLiteral("+1"));
    EXPECT_THAT(bodies(conversations.messages(QStringLiteral("1"))), ElementsAre("a", "c"));
    EXPECT_EQ(conversations.log().size(), 3);
}

TEST(ConversationSearch, ABlankQueryLeavesAll) {
    Search search;
    search.conversations.setLog({sms("1", 1), sms("2", 2)});
    EXPECT_THAT(search(""), ElementsAre("2", "1"));
    EXPECT_THAT(search(" \t "), ElementsAre("2", "1"));
}

TEST(ConversationSearch, FindsTheShownName) {
    Search search;
    search.conversations.setLog({sms("1", 1, "", QStringLiteral("Ann Bell")), sms("2", 2)});
    search.names.setCallLog({{.number = QStringLiteral("2"), .name = QStringLiteral("Émile")}});
    EXPECT_THAT(search("n bEL"), ElementsAre("1"));
    EXPECT_THAT(search(" éMI "), ElementsAre("2"));
}

TEST(ConversationSearch, FindsNoNameThatIsNotShown) {
    Search search;
    search.conversations.setLog({sms("1", 1, "", QStringLiteral("Ann"))});
    search.names.setCallLog({{.number = QStringLiteral("1"), .name = QStringLiteral("Bob")}});
    EXPECT_THAT(search("bob"), ElementsAre());
}

TEST(ConversationSearch, FindsTheAddressOnlyAsItIsWritten) {
    Search search;
    search.conversations.setLog({sms("+1 202", 1, "", QStringLiteral("Ann")), sms("MyBank", 2)});
    EXPECT_THAT(search("1 2"), ElementsAre("1202"));
    EXPECT_THAT(search("1202"), ElementsAre());
    EXPECT_THAT(search("MYB"), ElementsAre("mybank"));
}

TEST(ConversationSearch, FindsAnOldMessagesText) {
    Search search;
    search.conversations.setLog({sms("1", 1, "Lunch at Noon?"), sms("1", 2, "ok"), sms("2", 3, "noo n")});
    EXPECT_THAT(search("NOON"), ElementsAre("1"));
    EXPECT_THAT(search("noo"), ElementsAre("2", "1"));
    EXPECT_THAT(search("?o"), ElementsAre()) << "not across two messages";
}

TEST(ConversationSearch, IsOfTheLogOfTheMoment) {
    Search search;
    search.conversations.setLog({sms("1", 1, "alpha")});
    EXPECT_THAT(search("beta"), ElementsAre());
    search.conversations.append(sms("1", 2, "beta"));
    EXPECT_THAT(search("beta"), ElementsAre("1"));
    search.conversations.setLog({sms("1", 1, "gamma")});
    EXPECT_THAT(search("beta"), ElementsAre());
}
