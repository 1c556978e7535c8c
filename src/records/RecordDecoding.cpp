#include "records/RecordDecoding.h"

#include "link/Json.h"
#include "platform/Clock.h"
#include "records/RecordId.h"

namespace brenvale {

namespace {

// The typed read of one value, by the type of the field that takes it.
bool assign(const JsonValue& value, QString& field) {
    const auto text = value.string();
    field = text.value_or(field);
    return text.has_value();
}

bool assign(const JsonValue& value, std::optional<QString>& field) {
    field = value.string();
    return field.has_value();
}

bool assign(const JsonValue& value, double& field) {
    const auto number = value.number();
    field = number.value_or(field);
    return number.has_value();
}

bool assign(const JsonValue& value, qint64& field) {
    const auto integer = value.integer();
    field = integer.value_or(field);
    return integer.has_value();
}

/// Leaves `field` at its default where the member is absent or null; false where it is of another type.
template <typename Field>
bool readOptional(const JsonObject& json, std::string_view key, Field& field) {
    const auto value = json.value(key);
    return !value || value->isNull() || assign(*value, field);
}

/// False where the member is absent, null or of another type.
template <typename Field>
bool readRequired(const JsonObject& json, std::string_view key, Field& field) {
    const auto value = json.value(key);
    return value && assign(*value, field);
}

template <typename Record>
std::optional<QList<Record>> decodeList(const JsonObject& json, std::string_view key,
                                        std::optional<Record> (*decode)(const JsonObject&)) {
    const auto value = json.value(key);
    const auto array = value ? value->array() : std::nullopt;
    if (!array) {
        return {};
    }
    QList<Record> records;
    records.reserve(static_cast<qsizetype>(array->size()));
    for (const auto element : *array) {
        const auto object = JsonValue(element).object();
        auto record = object ? decode(*object) : std::nullopt;
        if (!record) {
            return {};
        }
        records.append(*std::move(record));
    }
    return records;
}

} // namespace

std::optional<NotifPayload> decodeNotifPayload(const JsonObject& json, const Clock& clock) {
    NotifPayload payload{.id = makeRecordId(), .time = clock.now()};
    const bool isValid = readOptional(json, "app", payload.app) &&
                         readOptional(json, "title", payload.title) &&
                         readOptional(json, "body", payload.body) &&
                         readOptional(json, "time", payload.time) && readOptional(json, "key", payload.key);
    return isValid ? std::optional(std::move(payload)) : std::nullopt;
}

std::optional<SmsRecord> decodeSmsRecord(const JsonObject& json) {
    SmsRecord sms;
    const bool isValid = readOptional(json, "address", sms.address) && readOptional(json, "name", sms.name) &&
                         readOptional(json, "body", sms.body) && readOptional(json, "date", sms.date) &&
                         readOptional(json, "type", sms.type);
    return isValid ? std::optional(std::move(sms)) : std::nullopt;
}

std::optional<CallRecord> decodeCallRecord(const JsonObject& json) {
    CallRecord call;
    const bool isValid = readRequired(json, "number", call.number) && readOptional(json, "name", call.name) &&
                         readRequired(json, "date", call.date) &&
                         readRequired(json, "duration", call.duration) &&
                         readRequired(json, "type", call.type);
    return isValid ? std::optional(std::move(call)) : std::nullopt;
}

std::optional<SimInfo> decodeSimInfo(const JsonObject& json) {
    SimInfo sim;
    const bool isValid = readRequired(json, "slot", sim.slot) && readRequired(json, "carrier", sim.carrier);
    return isValid ? std::optional(std::move(sim)) : std::nullopt;
}

std::optional<QList<SmsRecord>> decodeSmsHistoryMessage(const JsonObject& json) {
    return decodeList(json, "messages", decodeSmsRecord);
}

std::optional<QList<CallRecord>> decodeCallHistoryMessage(const JsonObject& json) {
    return decodeList(json, "calls", decodeCallRecord);
}

std::optional<QList<SimInfo>> decodeSimInfoMessage(const JsonObject& json) {
    return decodeList(json, "sims", decodeSimInfo);
}

} // namespace brenvale
