#pragma once

#include "records/IncomingCallInfo.h"

#include <QtGlobal>

#include <optional>
#include <string_view>
#include <variant>

namespace brenvale {

class JsonObject;

/// The call has ended, or there is none.
struct CallOver {};

/// A call rings or runs, or the message tells neither.
struct CallReport {
    enum class Banner {
        keep,  ///< says nothing of the ringing
        clear, ///< it does not ring any more
        show   ///< it rings, with `caller`
    };
    Banner banner = Banner::keep;
    IncomingCallInfo caller;
    std::optional<qint64> duration; ///< seconds of the running call
};

using CallOutcome = std::variant<CallOver, CallReport>;

/// What one of the phone's four call messages means. No earlier message plays a part: the phone may report in
/// any order and more than once. A duration or a number beyond 64 bits is fatal. Pure.
[[nodiscard]] CallOutcome interpretCall(std::string_view action, const JsonObject& json);

} // namespace brenvale
