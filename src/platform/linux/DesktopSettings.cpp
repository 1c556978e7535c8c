#include "platform/linux/DesktopSettings.h"

#include "platform/linux/ChildPrograms.h"
#include "platform/linux/CurrentDesktop.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <vector>

namespace brenvale {

namespace {

struct SettingsProgram {
    const char* desktop;
    const char* program;
    const char* notifications; ///< its argument for that pane; null where it opens at its front page
    const char* accessibility;
};

// In the order in which they are tried where the running desktop has none of them.
constexpr std::array settingsPrograms{
    SettingsProgram{"GNOME", "gnome-control-center", "notifications", "privacy"},
    SettingsProgram{"KDE", "systemsettings", "kcm_notifications", "kcm_access"},
    SettingsProgram{"KDE", "systemsettings5", "kcm_notifications", "kcm_access"},
    SettingsProgram{"X-Cinnamon", "cinnamon-settings", "notifications", "accessibility"},
    SettingsProgram{"Budgie", "budgie-control-center", "notifications", "privacy"},
    SettingsProgram{"XFCE", "xfce4-settings-manager", nullptr, nullptr},
    SettingsProgram{"MATE", "mate-control-center", nullptr, nullptr},
    SettingsProgram{"LXQt", "lxqt-config", nullptr, nullptr},
};

// Programs of their own for notifications alone.
constexpr std::array notificationPrograms{
    SettingsProgram{"XFCE", "xfce4-notifyd-config", nullptr, nullptr},
    SettingsProgram{"MATE", "mate-notification-properties", nullptr, nullptr},
    SettingsProgram{"LXQt", "lxqt-config-notificationd", nullptr, nullptr},
};

/// Those for `pane`, in the order in which they are tried: first those of the desktop.
std::vector<SettingsProgram> candidates(SystemSettings::Pane pane, const QStringList& desktops) {
    std::vector<SettingsProgram> own;
    std::vector<SettingsProgram> others;
    const auto sortIn = [&](const SettingsProgram& program) {
        const bool isOwn = desktops.contains(QLatin1StringView(program.desktop), Qt::CaseInsensitive);
        (isOwn ? own : others).push_back(program);
    };
    if (pane == SystemSettings::Pane::notifications) {
        std::ranges::for_each(notificationPrograms, sortIn);
    }
    std::ranges::for_each(settingsPrograms, sortIn);
    own.insert(own.end(), others.begin(), others.end());
    return own;
}

} // namespace

std::optional<QStringList> settingsCommand(SystemSettings::Pane pane, const QStringList& desktops,
                                           const std::function<bool(const QString& program)>& exists) {
    for (const auto& candidate : candidates(pane, desktops)) {
        if (const auto program = QString::fromLatin1(candidate.program); exists(program)) {
            const auto* argument = pane == SystemSettings::Pane::notifications ? candidate.notifications
                                                                               : candidate.accessibility;
            QStringList command{program};
            if (argument != nullptr) {
                command.append(QString::fromLatin1(argument));
            }
            return command;
        }
    }
    return {};
}

void DesktopSettings::open(Pane pane) {
    const auto exists = [](const QString& program) {
        return !QStandardPaths::findExecutable(program).isEmpty();
    };
    if (auto command = settingsCommand(pane, currentDesktop(), exists)) {
        const auto program = command->takeFirst();
        (void)programs_.start(program, *command);
    }
}

} // namespace brenvale
