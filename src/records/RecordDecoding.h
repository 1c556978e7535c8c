#pragma once

#include "records/CallRecord.h"
#include "records/NotifPayload.h"
#include "records/SimInfo.h"
#include "records/SmsRecord.h"

#include <QList>

#include <optional>

namespace brenvale {

class Clock;
class JsonObject;

/// Decoders of the phone's records. A member of another JSON type than the record's fails the whole record,
/// and one bad element fails its whole list; the cause is never told. Notifications and SMS fall back to a
/// default where a member is absent or null, calls and SIMs require theirs. Pure, but for the identity and
/// the time that a notification is given.
[[nodiscard]] std::optional<NotifPayload> decodeNotifPayload(const JsonObject& json, const Clock& clock);
[[nodiscard]] std::optional<SmsRecord> decodeSmsRecord(const JsonObject& json);
[[nodiscard]] std::optional<CallRecord> decodeCallRecord(const JsonObject& json);
[[nodiscard]] std::optional<SimInfo> decodeSimInfo(const JsonObject& json);

/// The logs and the SIM list as their messages wrap them, under "messages", "calls" and "sims".
[[nodiscard]] std::optional<QList<SmsRecord>> decodeSmsHistoryMessage(const JsonObject& json);
[[nodiscard]] std::optional<QList<CallRecord>> decodeCallHistoryMessage(const JsonObject& json);
[[nodiscard]] std::optional<QList<SimInfo>> decodeSimInfoMessage(const JsonObject& json);

} // namespace brenvale
