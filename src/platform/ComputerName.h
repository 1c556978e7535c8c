#pragma once

#include <QString>

namespace brenvale {

/// The name that the user gave this computer. Any thread, without blocking.
class ComputerName {
public:
    virtual ~ComputerName() = default;

    /// The display name; empty where the computer has none.
    [[nodiscard]] virtual QString localizedName() const = 0;
};

} // namespace brenvale
