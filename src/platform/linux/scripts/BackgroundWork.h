#pragma once

#include "platform/DispatchQueue.h"

#include <QString>

#include <functional>
#include <optional>

namespace brenvale {

/// Gets nothing, or why a script failed. On main, once.
using ScriptDone = std::move_only_function<void(std::optional<QString> error)>;

/// Work that may wait; gives nothing, or why it failed.
using ScriptWork = std::move_only_function<std::optional<QString>()>;

/// Runs `work` on a thread of its own, which ends with it, and calls `done` on main with what it gives. Work
/// that has not ended after `patience` fails with `lateError`; it goes on, but nobody hears of its end.
/// `main` has to live as long as the work. On main.
void runInBackground(DispatchQueue& main, ScriptWork work, std::chrono::milliseconds patience,
                     QString lateError, ScriptDone done);

} // namespace brenvale
