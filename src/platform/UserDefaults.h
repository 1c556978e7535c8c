#pragma once

#include "platform/SettingsText.h"
#include "records/Published.h"

#include <QString>

#include <expected>
#include <functional>

namespace brenvale {

/// The user's settings. Each read is fresh: a change made by another process is seen by the next one.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The integer under `key`; 0 where the key is absent or holds no integer. One beyond 64 bits becomes the
    /// nearest that is not. Any thread.
    [[nodiscard]] virtual qint64 integer(QStringView key) const = 0;

    /// Whether there is a value under `key`. Any thread.
    [[nodiscard]] virtual bool contains(QStringView key) const = 0;

    /// All that is written, of whatever section. The error says to people why the settings can't be read:
    /// also where a part of them can't. Any thread.
    [[nodiscard]] virtual std::expected<SettingsSections, QString> sections() const = 0;

    /// Stores `value` under `key`, for this process even where it cannot be written. On main.
    virtual void setInteger(QStringView key, qint64 value) = 0;

    /// Calls `observer` at once, and whenever a setting may have changed, by whatever process: before the
    /// return of a `setInteger`, a moment after the change of another. On main.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
