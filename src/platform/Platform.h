#pragma once

namespace brenvale {

class AccessibilityTrust;
class AddressWatch;
class Alerts;
class Clock;
class ComputerName;
class Downloads;
class EventPoster;
class FileViewer;
class InternalNotifications;
class Log;
class LoginItem;
class Pasteboard;
class ScriptRunner;
class StatusItem;
class SystemSettings;
class SystemSleep;
class UserDefaults;
class UserNotificationCenter;

/// Everything that the logic needs of the desktop, one small interface each. Whoever makes the platform keeps
/// its members alive for as long as the logic runs.
struct Platform {
    AccessibilityTrust& accessibilityTrust;
    AddressWatch& addressWatch;
    Alerts& alerts;
    Clock& clock;
    ComputerName& computerName;
    Downloads& downloads;
    EventPoster& eventPoster;
    FileViewer& fileViewer;
    InternalNotifications& internalNotifications;
    Log& log;
    LoginItem& loginItem;
    Pasteboard& pasteboard;
    ScriptRunner& scriptRunner;
    StatusItem& statusItem;
    SystemSettings& systemSettings;
    SystemSleep& systemSleep;
    UserDefaults& userDefaults;
    UserNotificationCenter& userNotificationCenter;
};

} // namespace brenvale
