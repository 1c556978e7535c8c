#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

namespace brenvale {

/// One notification forwarded from the phone. Two decodes of the same message are two different rows, so it
/// has no equality.
struct NotifPayload {
    QUuid id; ///< made at each decode; the row's identity on the desktop, unknown to the phone
    QString app;
    QString title;
    QString body;
    double time = 0;            ///< seconds since 1970
    std::optional<QString> key; ///< the phone's own handle; a reply quotes it

    /// The instant `time` seconds after 1970, unscaled.
    [[nodiscard]] QDateTime date() const;

    /// The time alone if `date` lies today in the user's calendar, else short date and time; in the user's
    /// locale.
    [[nodiscard]] QString formattedTime() const;
};

} // namespace brenvale
