#pragma once

#include "records/Published.h"

#include <QStringView>

#include <functional>

namespace brenvale {

/// The user's settings. Each read is fresh: a change made by another process is seen by the next one.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The integer under `key`; 0 where the key is absent or holds no integer. Any thread.
    [[nodiscard]] virtual qint64 integer(QStringView key) const = 0;

    /// Whether there is a value under `key`. Any thread.
    [[nodiscard]] virtual bool contains(QStringView key) const = 0;

    /// Stores `value` under `key`, for this process even where it cannot be written. On main.
    virtual void setInteger(QStringView key, qint64 value) = 0;

    /// Calls `observer` at once, and whenever a setting may have changed, by whatever process: before the
    /// return of a `setInteger`, a moment after the change of another. On main.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
