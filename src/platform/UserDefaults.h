#pragma once

#include <QStringView>

namespace brenvale {

/// The user's settings. Each read is fresh: a change made by another process is seen by the next one. Any
/// thread.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The integer under `key`; 0 where the key is absent or holds no integer. One beyond 64 bits becomes the
    /// nearest that is not.
    [[nodiscard]] virtual qint64 integer(QStringView key) const = 0;
};

} // namespace brenvale
