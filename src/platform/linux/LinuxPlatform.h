#pragma once

#include "platform/InternalNotifications.h"
#include "platform/Platform.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/ChildPrograms.h"
#include "platform/linux/ColorScheme.h"
#include "platform/linux/DBusFileViewer.h"
#include "platform/linux/DBusNotificationCenter.h"
#include "platform/linux/DesktopSettings.h"
#include "platform/linux/HostnamedComputerName.h"
#include "platform/linux/LogindSleep.h"
#include "platform/linux/QtAlerts.h"
#include "platform/linux/RouteMessages.h"
#include "platform/linux/SettingsDefaults.h"
#include "platform/linux/StandardOutputLog.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/TrayItem.h"
#include "platform/linux/UrlOpener.h"
#include "platform/linux/XdgDownloads.h"
#include "platform/linux/clipboard/ClipboardService.h"
#include "platform/linux/clipboard/DesktopPasteboard.h"
#include "platform/linux/input/EventPostingTrust.h"
#include "platform/linux/input/InputWays.h"
#include "platform/linux/scripts/LinuxScriptRunner.h"

#include <memory>

namespace brenvale {

/// The back ends of a Linux desktop; the only place that chooses them. Made on main after the application
/// object.
class LinuxPlatform {
public:
    /// `environment` is what the process was started with.
    LinuxPlatform(DispatchQueue& main, const Display& display, const QProcessEnvironment& environment);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    [[nodiscard]] Platform& platform() { return platform_; }

    /// The last step of the process: what it gave to other programs stays with the desktop, where that can
    /// be. Takes some seconds at most.
    void saveBeforeEnd() { clipboard_->saveBeforeEnd(); }

private:
    ColorScheme colorScheme_;
    ChildPrograms childPrograms_;                 ///< before the others, which use it
    std::unique_ptr<ClipboardService> clipboard_; ///< as well
    InputWays input_;
    LinuxEventPoster eventPoster_;
    EventPostingTrust accessibilityTrust_;
    RouteAddressWatch addressWatch_;
    QtAlerts alerts_;
    SystemClock clock_;
    HostnamedComputerName computerName_;
    XdgDownloads downloads_;
    DBusFileViewer fileViewer_;
    InternalNotifications internalNotifications_;
    StandardOutputLog log_;
    AutostartEntry loginItem_;
    DesktopPasteboard pasteboard_;
    LinuxScriptRunner scriptRunner_;
    TrayItem statusItem_;
    DesktopSettings systemSettings_{childPrograms_};
    LogindSleep systemSleep_;
    UrlOpener urlOpener_{childPrograms_};
    SettingsDefaults userDefaults_;
    DBusNotificationCenter userNotificationCenter_;
    Platform platform_;
};

} // namespace brenvale
