#include "calls/CallEvent.h"
#include "link/Json.h"
#include "link/MessageBuffer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

using namespace brenvale;

namespace {

CallOutcome interpreted(std::string_view action, std::string_view json) {
    JsonReader reader;
    const MessageBuffer text(json);
    const auto document = reader.parse(text);
    return interpretCall(action, *document->root().object());
}

/// An outcome in a few words: "over", or banner, number, name and duration.
std::string described(const CallOutcome& outcome) {
    const auto* report = std::get_if<CallReport>(&outcome);
    if (report == nullptr) {
        return "over";
    }
    std::string text;
    switch (report->banner) {
    case CallReport::Banner::keep:
        text = "keep";
        break;
    case CallReport::Banner::clear:
        text = "clear";
        break;
    case CallReport::Banner::show:
        text = "show " + report->caller.number.toStdString();
        text += report->caller.name ? " named " + report->caller.name->toStdString() : "";
        break;
    }
    return text + (report->duration ? " for " + std::to_string(*report->duration) : "");
}

} // namespace

struct Case {
    const char* action;
    const char* json;
    const char* outcome;

    friend std::ostream& operator<<(std::ostream& stream, const Case& sample) {
        return stream << sample.action << ' ' << sample.json;
    }
};

namespace {

class InterpretCall : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(InterpretCall, GivesTheOutcome) {
    EXPECT_EQ(described(interpreted(GetParam().action, GetParam().json)), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(TheCallIsOver, InterpretCall,
                         testing::Values(Case{"call_ended",
                                              R"({"state":"RINGING","number":"1","duration":5})", "over"},
                                         Case{"call_ended", "{}", "over"},
                                         Case{"incoming_call", R"({"state":"IDLE","number":"1"})", "over"},
                                         Case{"call_state_changed", R"({"state":"idle"})", "over"},
                                         Case{"call_update", R"({"duration":-1,"number":"1"})", "over"},
                                         Case{"call_update", R"({"duration":-1.9})", "over"}));

INSTANTIATE_TEST_SUITE_P(
    ItRings, InterpretCall,
    testing::Values(Case{"incoming_call", R"({"number":"1"})", "show 1"},
                    Case{"incoming_call", R"({"number":"1","name":"Ann"})", "show 1 named Ann"},
                    Case{"incoming_call", R"({"number":"1","name":" "})", "show 1 named  "},
                    Case{"incoming_call", R"({"number":"1","name":7})", "show 1"},
                    Case{"incoming_call", R"({"number":"1","state":"OFFHOOK"})", "show 1"},
                    Case{"incoming_call", R"({"number":"1","duration":0})", "show 1 for 0"},
                    Case{"incoming_call", R"({"number":"1","duration":-1})", "show 1 for -1"},
                    Case{"call_state_changed", R"({"state":"RINGING","number":"1"})", "show 1"},
                    Case{"call_update", R"({"state":"rInGiNg","number":"1","duration":3})", "show 1 for 3"}));

INSTANTIATE_TEST_SUITE_P(
    ItDoesNotRing, InterpretCall,
    testing::Values(Case{"call_state_changed", R"({"state":"OFFHOOK","number":"1"})", "clear"},
                    Case{"call_state_changed", R"({"state":"offhook","duration":-1})", "clear for -1"},
                    Case{"call_update", R"({"duration":12.9})", "keep for 12"},
                    Case{"call_update", R"({"duration":"12"})", "keep"},
                    Case{"call_update", R"({"duration":true})", "keep"},
                    Case{"call_update", R"({"duration":null})", "keep"}, Case{"call_update", "{}", "keep"},
                    Case{"call_state_changed", R"({"state":"DIALING","number":"1"})", "keep"},
                    Case{"call_state_changed", R"({"state":5})", "keep"}, Case{"incoming_call", "{}", "keep"},
                    Case{"incoming_call", R"({"number":" \n"})", "keep"},
                    Case{"incoming_call", R"({"number":"","state":"OFFHOOK"})", "clear"}));

INSTANTIATE_TEST_SUITE_P(
    TheNumber, InterpretCall,
    testing::Values(Case{"incoming_call", R"({"phoneNumber":"2"})", "show 2"},
                    Case{"incoming_call", R"({"incomingNumber":"3"})", "show 3"},
                    Case{"incoming_call", R"({"address":"4"})", "show 4"},
                    Case{"incoming_call", R"({"from":"5"})", "show 5"},
                    Case{"incoming_call", R"({"from":"5","address":"4","phoneNumber":"2"})", "show 2"},
                    Case{"incoming_call", R"({"number":null,"phoneNumber":"2"})", "keep"},
                    Case{"incoming_call", R"({"number":{},"phoneNumber":"2"})", "keep"},
                    Case{"incoming_call", R"({"number":true})", "keep"},
                    Case{"incoming_call", R"({"number":4917})", "show 4917"},
                    Case{"incoming_call", R"({"number":4917.9})", "show 4917"},
                    Case{"incoming_call", R"({"number":-0.5})", "show 0"},
                    Case{"incoming_call", R"({"number":4.9e3})", "show 4900"},
                    Case{"incoming_call", R"({"number":" \u00a0+49 17\r\n"})", "show +49 17"}));

TEST(InterpretCallDeathTest, ANumberBeyond64BitsIsFatal) {
    constexpr auto greater =
        "Double value cannot be converted to Int because the result would be greater than Int.max";
    constexpr auto less =
        "Double value cannot be converted to Int because the result would be less than Int.min";
    EXPECT_DEATH(interpreted("call_update", R"({"duration":9223372036854775808})"), greater);
    EXPECT_DEATH(interpreted("call_ended", R"({"duration":1e19})"), greater);
    EXPECT_DEATH(interpreted("call_update", R"({"duration":1e999})"), greater);
    EXPECT_DEATH(interpreted("call_update", R"({"duration":-1e19})"), less);
    EXPECT_DEATH(interpreted("call_update", R"({"duration":-9223372036854775809})"), less);
    EXPECT_DEATH(interpreted("incoming_call", R"({"number":99999999999999999999})"), greater);
    EXPECT_DEATH(interpreted("incoming_call", R"({"from":-1e999})"), less);
}

TEST(InterpretCallRange, ANumberIsNotReadOnceTheCallIsOver) {
    EXPECT_EQ(described(interpreted("call_ended", R"({"number":1e19})")), "over");
}

TEST(InterpretCallRange, TheLargestIntegersAreInRange) {
    EXPECT_EQ(described(interpreted("call_update", R"({"duration":9223372036854775807})")),
              "keep for 9223372036854775807");
    EXPECT_EQ(described(interpreted("call_update", R"({"duration":-9223372036854775808})")),
              "keep for -9223372036854775808");
}
