#pragma once

#include "platform/SystemSettings.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace brenvale {

class ChildPrograms;

/// The settings programs of the desktops that have one.
class DesktopSettings final : public SystemSettings {
public:
    /// `programs` must outlive it.
    explicit DesktopSettings(const ChildPrograms& programs) : programs_(programs) {}

    void open(Pane pane) override;

private:
    const ChildPrograms& programs_;
};

/// The command line that opens `pane`: the running desktop's own program, else the first one that exists;
/// nothing where none does. `desktops` are the names in XDG_CURRENT_DESKTOP. Pure.
[[nodiscard]] std::optional<QStringList>
settingsCommand(SystemSettings::Pane pane, const QStringList& desktops,
                const std::function<bool(const QString& program)>& exists);

} // namespace brenvale
