#include "records/RecordDecoding.h"
#include "fakes/FakePlatform.h"
#include "link/Json.h"
#include "link/MessageBuffer.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

/// Runs a decoder over the object that `json` holds.
template <typename Decode>
auto decoded(std::string_view json, Decode decode) {
    JsonReader reader;
    const MessageBuffer text(json);
    const auto document = reader.parse(text);
    EXPECT_TRUE(document.has_value()) << json;
    return decode(*document->root().object());
}

const FakeClock presentTime;

auto decodeNotif(std::string_view json) {
    return decoded(json, [](const JsonObject& object) { return decodeNotifPayload(object, presentTime); });
}

} // namespace

TEST(NotifPayload, DecodesEveryMember) {
    const auto payload =
        decodeNotif(R"({"app":"Chat","title":"Ann","body":"Hi","time":1700000000.5,"key":"k"})");
    ASSERT_TRUE(payload);
    EXPECT_EQ(payload->app, QStringLiteral("Chat"));
    EXPECT_EQ(payload->title, QStringLiteral("Ann"));
    EXPECT_EQ(payload->body, QStringLiteral("Hi"));
    EXPECT_EQ(payload->time, 1700000000.5);
    EXPECT_EQ(payload->key, QStringLiteral("k"));
}

TEST(NotifPayload, AbsentAndNullMembersHaveDefaults) {
    for (const std::string_view json :
         {R"({"app":"Chat"})", R"({"app":"Chat","title":null,"body":null,"time":null,"key":null})"}) {
        const auto payload = decodeNotif(json);
        ASSERT_TRUE(payload) << json;
        EXPECT_TRUE(payload->title.isEmpty());
        EXPECT_TRUE(payload->body.isEmpty());
        EXPECT_EQ(payload->time, presentTime.time);
        EXPECT_FALSE(payload->key.has_value());
    }
}

TEST(NotifPayload, AMemberOfAnotherTypeFails) {
    for (const std::string_view json :
         {R"({"app":1})", R"({"title":false})", R"({"body":[]})", R"({"time":"1700000000"})",
          R"({"time":true})", R"({"key":12})", R"({"time":1e999})"}) {
        EXPECT_FALSE(decodeNotif(json)) << json;
    }
}

TEST(NotifPayload, TwoDecodesAreTwoRows) {
    const auto first = decodeNotif(R"({"app":"Chat"})");
    const auto second = decodeNotif(R"({"app":"Chat"})");
    EXPECT_NE(first->id, second->id);
    EXPECT_FALSE(first->id.isNull());
}

TEST(SmsRecord, DecodesEveryMember) {
    const auto sms = decoded(R"({"address":"+49170","name":"Ann","body":"Hi","date":1700000000000,"type":2})",
                             decodeSmsRecord);
    ASSERT_TRUE(sms);
    EXPECT_EQ(sms->address, QStringLiteral("+49170"));
    EXPECT_EQ(sms->name, QStringLiteral("Ann"));
    EXPECT_EQ(sms->body, QStringLiteral("Hi"));
    EXPECT_EQ(sms->date, 1700000000000.0);
    EXPECT_EQ(sms->id(), sms->date);
    EXPECT_EQ(sms->type, 2);
}

TEST(SmsRecord, AbsentAndNullMembersHaveDefaults) {
    for (const std::string_view json :
         {"{}", R"({"address":null,"name":null,"body":null,"date":null,"type":null})"}) {
        const auto sms = decoded(json, decodeSmsRecord);
        ASSERT_TRUE(sms) << json;
        EXPECT_TRUE(sms->address.isEmpty());
        EXPECT_FALSE(sms->name.has_value());
        EXPECT_TRUE(sms->body.isEmpty());
        EXPECT_EQ(sms->date, 0);
        EXPECT_EQ(sms->type, 1);
    }
}

TEST(SmsRecord, AMemberOfAnotherTypeFails) {
    for (const std::string_view json :
         {R"({"address":49170})", R"({"name":{}})", R"({"body":1})", R"({"date":"5"})", R"({"type":"2"})",
          R"({"type":1.5})", R"({"type":99999999999999999999})"}) {
        EXPECT_FALSE(decoded(json, decodeSmsRecord)) << json;
    }
}

TEST(SmsRecord, AWholeNumberWithAPointIsAType) {
    EXPECT_EQ(decoded(R"({"type":2.0,"date":1.7e12})", decodeSmsRecord)->type, 2);
}

TEST(CallRecord, DecodesEveryMemberAndNeedsAllButTheName) {
    const auto call =
        decoded(R"({"number":"1","name":"Ann","date":5,"duration":6,"type":4})", decodeCallRecord);
    ASSERT_TRUE(call);
    EXPECT_EQ(call->number, QStringLiteral("1"));
    EXPECT_EQ(call->name, QStringLiteral("Ann"));
    EXPECT_EQ(call->date, 5);
    EXPECT_EQ(call->id(), 5);
    EXPECT_EQ(call->duration, 6);
    EXPECT_EQ(call->type, 4);
    EXPECT_FALSE(
        decoded(R"({"number":"1","date":5,"duration":6,"type":4})", decodeCallRecord)->name.has_value());
    EXPECT_TRUE(decoded(R"({"number":"1","name":null,"date":5,"duration":6,"type":4})", decodeCallRecord));
}

TEST(CallRecord, AMissingNullOrMistypedMemberFails) {
    for (const std::string_view json :
         {"{}", R"({"date":5,"duration":6,"type":1})", R"({"number":"1","duration":6,"type":1})",
          R"({"number":"1","date":5,"type":1})", R"({"number":"1","date":5,"duration":6})",
          R"({"number":null,"date":5,"duration":6,"type":1})",
          R"({"number":"1","date":null,"duration":6,"type":1})",
          R"({"number":"1","date":5,"duration":6.5,"type":1})",
          R"({"number":1,"date":5,"duration":6,"type":1})",
          R"({"number":"1","name":2,"date":5,"duration":6,"type":1})"}) {
        EXPECT_FALSE(decoded(json, decodeCallRecord)) << json;
    }
}

TEST(SimInfo, NeedsBothMembers) {
    const auto sim = decoded(R"({"slot":1,"carrier":"A"})", decodeSimInfo);
    ASSERT_TRUE(sim);
    EXPECT_EQ(*sim, (SimInfo{1, QStringLiteral("A")}));
    EXPECT_EQ(sim->id(), 1);
    for (const std::string_view json :
         {R"({"slot":1})", R"({"carrier":"A"})", R"({"slot":null,"carrier":"A"})",
          R"({"slot":"1","carrier":"A"})", R"({"slot":1,"carrier":2})"}) {
        EXPECT_FALSE(decoded(json, decodeSimInfo)) << json;
    }
}

TEST(SimInfo, EqualityAndHashLookAtBothFields) {
    const SimInfo sim{1, QStringLiteral("A")};
    EXPECT_EQ(qHash(sim), qHash(SimInfo{1, QStringLiteral("A")}));
    EXPECT_NE(sim, (SimInfo{2, QStringLiteral("A")}));
    EXPECT_NE(sim, (SimInfo{1, QStringLiteral("B")}));
}

TEST(Wrappers, OneBadElementFailsTheList) {
    EXPECT_EQ(decoded(R"({"messages":[{},{}]})", decodeSmsHistoryMessage)->size(), 2);
    EXPECT_FALSE(decoded(R"({"messages":[{},{"date":"x"}]})", decodeSmsHistoryMessage));
    EXPECT_FALSE(decoded(R"({"messages":[null]})", decodeSmsHistoryMessage));
    EXPECT_FALSE(decoded(R"({"calls":[{}]})", decodeCallHistoryMessage));
    EXPECT_FALSE(decoded(R"({"sims":{"slot":1,"carrier":"A"}})", decodeSimInfoMessage));
    EXPECT_FALSE(decoded("{}", decodeSimInfoMessage));
}
