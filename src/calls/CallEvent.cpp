#include "calls/CallEvent.h"

#include "link/Json.h"
#include "platform/Fatal.h"
#include "records/CutToInteger.h"

#include <array>

namespace brenvale {

namespace {

constexpr CutTexts cutTexts{
    .notFinite = "Double value cannot be converted to Int because it is either infinite or NaN",
    .tooHigh = "Double value cannot be converted to Int because the result would be greater than Int.max",
    .tooLow = "Double value cannot be converted to Int because the result would be less than Int.min"};

/// An integer, or a number with its fraction cut off; nothing for any other type. There is no range check
/// before the cut: a number beyond 64 bits ends the process.
std::optional<qint64> cutInteger(const JsonValue& value) {
    if (const auto integer = value.integer()) {
        return integer;
    }
    const auto number = value.anyNumber();
    if (!number) {
        return {};
    }
    if (const auto* outOfRange = std::get_if<OutOfRange>(&*number)) {
        fatal(*outOfRange == OutOfRange::tooHigh ? cutTexts.tooHigh : cutTexts.tooLow);
    }
    return cutToInteger(std::get<double>(*number), cutTexts);
}

std::optional<qint64> readDuration(const JsonObject& json) {
    const auto value = json.value("duration");
    return value ? cutInteger(*value) : std::nullopt;
}

/// The other party's number, trimmed. The first key that is present decides, even if its value is of no use.
QString readNumber(const JsonObject& json) {
    static constexpr std::array<std::string_view, 5> keys{"number", "phoneNumber", "incomingNumber",
                                                          "address", "from"};
    for (const auto key : keys) {
        if (const auto value = json.value(key)) {
            if (const auto text = value->string()) {
                return text->trimmed();
            }
            const auto integer = cutInteger(*value);
            return integer ? QString::number(*integer) : QString();
        }
    }
    return {};
}

} // namespace

CallOutcome interpretCall(std::string_view action, const JsonObject& json) {
    const auto state = json.string("state").value_or(QString()).toUpper();
    const auto duration = readDuration(json);
    if (action == "call_ended" || state == u"IDLE" || (action == "call_update" && duration == -1)) {
        return CallOver{};
    }
    CallReport report{.caller = {.number = readNumber(json), .name = json.string("name")},
                      .duration = duration};
    const bool rings = action == "incoming_call" || state == u"RINGING";
    if (rings && !report.caller.number.isEmpty()) {
        report.banner = CallReport::Banner::show;
    } else if (state == u"OFFHOOK") {
        report.banner = CallReport::Banner::clear;
    }
    return report;
}

} // namespace brenvale
