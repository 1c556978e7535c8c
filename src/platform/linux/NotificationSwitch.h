#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace brenvale {

class ChildPrograms;

/// The desktop's own switch for the notifications of this program, as far as the desktop has one. On main.
class NotificationSwitch {
public:
    NotificationSwitch() = delete;

    /// Reads it; `answer` comes on main and may come before the return. A switch that cannot be read is on.
    static void isOff(const ChildPrograms& programs, std::function<void(bool isOff)> answer);
};

/// Whether the settings file of Plasma's notifications switches the pop-ups of `application` off: group
/// [Applications][application], key ShowPopups. Nothing where it does not say. Pure.
[[nodiscard]] std::optional<bool> plasmaSwitchesOff(const QByteArray& settings,
                                                    const QByteArray& application);

} // namespace brenvale
