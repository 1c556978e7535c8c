#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// One call of the phone's log.
struct CallRecord {
    QString number;
    std::optional<QString> name;
    double date = 0;     ///< milliseconds since 1970
    qint64 duration = 0; ///< as the phone reports it
    qint64 type = 1;     ///< 3 was missed, 2 went out, any other came in

    /// The identity in a list. Two calls of one millisecond share it.
    [[nodiscard]] double id() const { return date; }
};

} // namespace brenvale
