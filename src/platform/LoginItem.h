#pragma once

#include <QString>

#include <expected>

namespace brenvale {

/// Whether the desktop starts the program at login; the desktop keeps that, not the program. On main.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// True only where the program will start: not while the entry is switched off by other means.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Both give the system's error as a text for people. Unregistering what is not enabled is an error.
    [[nodiscard]] virtual std::expected<void, QString> registerItem() = 0;
    [[nodiscard]] virtual std::expected<void, QString> unregisterItem() = 0;
};

} // namespace brenvale
