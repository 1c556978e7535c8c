#include "platform/linux/DesktopSettings.h"

#include <gtest/gtest.h>

using namespace brenvale;
using Pane = SystemSettings::Pane;

namespace {

/// The command line on a desktop with these programs; empty for none.
std::string command(Pane pane, const QStringList& desktops, const QStringList& installed) {
    const auto exists = [&installed](const QString& program) {
        return installed.contains(program);
    };
    return settingsCommand(pane, desktops, exists).value_or(QStringList()).join(u' ').toStdString();
}

} // namespace

TEST(DesktopSettings, EachDesktopOpensItsOwnProgram) {
    const QStringList all{"gnome-control-center", "systemsettings", "xfce4-notifyd-config",
                          "cinnamon-settings"};
    EXPECT_EQ(command(Pane::notifications, {"ubuntu", "GNOME"}, all), "gnome-control-center notifications");
    EXPECT_EQ(command(Pane::notifications, {"KDE"}, all), "systemsettings kcm_notifications");
    EXPECT_EQ(command(Pane::notifications, {"XFCE"}, all), "xfce4-notifyd-config");
    EXPECT_EQ(command(Pane::notifications, {"X-Cinnamon"}, all), "cinnamon-settings notifications");
    EXPECT_EQ(command(Pane::accessibility, {"KDE"}, all), "systemsettings kcm_access");
}

TEST(DesktopSettings, AnotherDesktopTakesWhicheverExists) {
    EXPECT_EQ(command(Pane::notifications, {"sway"}, {"systemsettings5"}),
              "systemsettings5 kcm_notifications");
    EXPECT_EQ(command(Pane::accessibility, {"XFCE"}, {"xfce4-settings-manager"}), "xfce4-settings-manager");
    EXPECT_EQ(command(Pane::notifications, {}, {"lxqt-config"}), "lxqt-config");
}

TEST(DesktopSettings, WithoutAnyThereIsNothingToOpen) {
    EXPECT_EQ(command(Pane::notifications, {"GNOME"}, {}), "");
}
