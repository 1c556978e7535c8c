#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// Number and name of a ringing call.
struct IncomingCallInfo {
    QString number;
    std::optional<QString> name;
};

} // namespace brenvale
