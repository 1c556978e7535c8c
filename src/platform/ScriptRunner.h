#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace brenvale {

/// Performs the handful of scripts that the remote control knows: output volume, opening a location, the
/// Trash, lock and sleep. It reads exactly those forms and evaluates nothing: anything else is an error, and
/// then nothing is done.
class ScriptRunner {
public:
    /// Gets nothing, or why the script failed.
    using Completion = std::move_only_function<void(std::optional<QString> error)>;

    virtual ~ScriptRunner() = default;

    /// Begins to perform `source` and returns at once, however long that takes; scripts are performed one
    /// after another in their order. `completion` is called once, on main, never before the return. On main.
    virtual void execute(const QString& source, Completion completion) = 0;
};

} // namespace brenvale
