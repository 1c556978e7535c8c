#include "FuzzTarget.h"
#include "fakes/FakePlatform.h"
#include "link/Json.h"
#include "link/JsonRepair.h"
#include "link/MessageBuffer.h"
#include "records/RecordDecoding.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace brenvale;

namespace {

const FakeClock presentTime;

template <typename Record>
using List = std::optional<QList<Record>>;

QJsonValue written(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonObject written(const SmsRecord& sms) {
    return {{"address", sms.address},
            {"name", written(sms.name)},
            {"body", sms.body},
            {"date", sms.date},
            {"type", sms.type}};
}

QJsonObject written(const CallRecord& call) {
    return {{"number", call.number},
            {"name", written(call.name)},
            {"date", call.date},
            {"duration", call.duration},
            {"type", call.type}};
}

QJsonObject written(const SimInfo& sim) {
    return {{"slot", sim.slot}, {"carrier", sim.carrier}};
}

QJsonObject written(const NotifPayload& payload) {
    return {{"app", payload.app},
            {"title", payload.title},
            {"body", payload.body},
            {"time", payload.time},
            {"key", written(payload.key)}};
}

template <typename Record>
QByteArray listText(const char* key, const QList<Record>& records) {
    QJsonArray array;
    for (const auto& record : records) {
        array.append(written(record));
    }
    return writeJson({{QLatin1String(key), array}});
}

/// The object of a text that was just written, which cannot fail.
template <typename Use>
void readBack(const QByteArray& text, Use use) {
    JsonReader reader;
    const MessageBuffer buffer({text.constData(), static_cast<std::size_t>(text.size())});
    const auto document = reader.parse(buffer);
    require(document.has_value(), "what is written is JSON");
    use(*document->root().object());
}

/// What was decoded once must decode to the same when it is written and read again: a number that is cut or a
/// text that is broken shows here.
template <typename Record>
void checkList(const JsonObject& json, const char* key, List<Record> (*decode)(const JsonObject&)) {
    const auto records = decode(json);
    if (!records) {
        return;
    }
    const auto text = listText(key, *records);
    readBack(text, [&](const JsonObject& again) {
        const auto same = decode(again);
        require(same && listText(key, *same) == text, "a list survives being written and read");
    });
}

void checkNotification(const JsonObject& json) {
    const auto payload = decodeNotifPayload(json, presentTime);
    if (!payload) {
        return;
    }
    require(!payload->id.isNull(), "a notification has an identity");
    const auto text = writeJson(written(*payload));
    readBack(text, [&](const JsonObject& again) {
        const auto same = decodeNotifPayload(again, presentTime);
        require(same && writeJson(written(*same)) == text, "a notification survives being written and read");
    });
}

/// The repair is for what the parser refuses and leaves everything else as it is.
void checkRepair(const MessageBuffer& message) {
    simdjson::dom::parser parser;
    const auto isAccepted = [&parser](const MessageBuffer& text) {
        const auto bytes = text.text();
        return parser.parse(bytes.data(), bytes.size(), false).error() == simdjson::SUCCESS;
    };
    const auto repaired = repairJson(message.text());
    if (isAccepted(message)) {
        require(repaired.text() == message.text(), "what the parser accepts is not repaired");
    } else if (isAccepted(repaired)) {
        require(repairJson(repaired.text()).text() == repaired.text(), "nothing is repaired twice");
    }
}

} // namespace

/// The input is one JSON text, which every decoder takes for the record it knows.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static JsonReader reader; // as for the messages of one server: the memory of earlier texts serves again
    const MessageBuffer message(inputText(data, size));
    checkRepair(message);
    const auto document = reader.parse(message);
    const auto json = document ? document->root().object() : std::nullopt;
    if (!json) {
        return 0;
    }
    checkNotification(*json);
    (void)decodeSmsRecord(*json);
    (void)decodeCallRecord(*json);
    (void)decodeSimInfo(*json);
    checkList(*json, "messages", decodeSmsHistoryMessage);
    checkList(*json, "calls", decodeCallHistoryMessage);
    checkList(*json, "sims", decodeSimInfoMessage);
    return 0;
}
