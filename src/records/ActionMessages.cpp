#include "records/ActionMessages.h"

namespace brenvale {

QJsonObject encodeAction(const ReplyActionMessage& reply) {
    return {{QStringLiteral("action"), ReplyActionMessage::action.toString()},
            {QStringLiteral("key"), reply.key},
            {QStringLiteral("message"), reply.message}};
}

QJsonObject encodeAction(const SendSmsActionMessage& sms) {
    return {{QStringLiteral("action"), SendSmsActionMessage::action.toString()},
            {QStringLiteral("number"), sms.number},
            {QStringLiteral("body"), sms.body},
            {QStringLiteral("simSlot"), sms.simSlot}};
}

} // namespace brenvale
