#pragma once

#include "platform/LoginItem.h"

#include <QString>

namespace brenvale {

/// The user's entry among the programs that start at login (Desktop Application Autostart Specification,
/// https://specifications.freedesktop.org/autostart-spec).
class AutostartEntry final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] std::expected<void, QString> registerItem() override;
    [[nodiscard]] std::expected<void, QString> unregisterItem() override;
};

/// `path` as the value of a key of a desktop entry that holds a text, such as TryExec. Pure.
[[nodiscard]] QString entryString(QString path);

/// `path` as the first word of a desktop entry's Exec key. Pure.
[[nodiscard]] QString execWord(const QString& path);

} // namespace brenvale
