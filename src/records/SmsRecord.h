#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// One SMS of the phone's log.
struct SmsRecord {
    static constexpr qint64 sent = 2;

    QString address; ///< the other party's number or sender name, as the phone stores it
    std::optional<QString> name;
    QString body;
    double date = 0; ///< milliseconds since 1970
    qint64 type = 1; ///< `sent` by the phone's owner; any other was received

    /// The identity in a list. Two messages of one millisecond share it.
    [[nodiscard]] double id() const { return date; }
};

} // namespace brenvale
