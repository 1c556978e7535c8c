#pragma once

#include <QString>

namespace brenvale {

/// Where received files go. Any thread.
class Downloads {
public:
    virtual ~Downloads() = default;

    /// The folder's path. It is made if it is missing; where that fails, opening a file in it fails.
    [[nodiscard]] virtual QString folder() const = 0;
};

} // namespace brenvale
