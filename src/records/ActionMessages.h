#pragma once

#include <QJsonObject>
#include <QString>

namespace brenvale {

/// The two messages to the phone that are records. All members are always written, under their own names.

/// The answer to a notification.
struct ReplyActionMessage {
    static constexpr QStringView action = u"reply";
    QString key; ///< of the notification, as the phone gave it
    QString message;
};

/// An SMS for the phone to send.
struct SendSmsActionMessage {
    static constexpr QStringView action = u"send_sms";
    QString number;
    QString body;
    qint64 simSlot = 0;
};

[[nodiscard]] QJsonObject encodeAction(const ReplyActionMessage& reply);
[[nodiscard]] QJsonObject encodeAction(const SendSmsActionMessage& sms);

} // namespace brenvale
