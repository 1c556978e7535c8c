#pragma once

#include "records/IncomingCallInfo.h"

#include <QString>

namespace brenvale {

/// The lines that tell who calls. An empty second line is not shown.
struct CallerText {
    QString firstLine;
    QString secondLine;

    bool operator==(const CallerText&) const = default;
};

/// Of a ringing call: the name over the number, or what there is of them. What is blank or "unknown", in
/// whatever case, does not count. Pure.
[[nodiscard]] CallerText incomingCallerText(const IncomingCallInfo& info);

/// Of a running call, whose texts are taken as they are. Pure.
[[nodiscard]] CallerText activeCallerText(const QString& name, const QString& number);

/// Minutes and seconds, two digits each and more where an hour has passed, as "62:05". Pure.
[[nodiscard]] QString formatDuration(qint64 seconds);

} // namespace brenvale
