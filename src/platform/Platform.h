#pragma once

namespace brenvale {

class Clock;
class ComputerName;
class Downloads;
class FileViewer;
class InternalNotifications;
class Log;
class Pasteboard;
class UserDefaults;
class UserNotificationCenter;

/// Everything that the logic needs of the desktop, one small interface each. Whoever makes the platform keeps
/// its members alive for as long as the logic runs.
struct Platform {
    Clock& clock;
    ComputerName& computerName;
    Downloads& downloads;
    FileViewer& fileViewer;
    InternalNotifications& internalNotifications;
    Log& log;
    Pasteboard& pasteboard;
    UserDefaults& userDefaults;
    UserNotificationCenter& userNotificationCenter;
};

} // namespace brenvale
