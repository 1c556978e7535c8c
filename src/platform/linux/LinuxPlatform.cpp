#include "platform/linux/LinuxPlatform.h"

namespace brenvale {

LinuxPlatform::LinuxPlatform(DispatchQueue& main)
    : userNotificationCenter_(main),
      platform_{.clock = clock_,
                .computerName = computerName_,
                .downloads = downloads_,
                .fileViewer = fileViewer_,
                .internalNotifications = internalNotifications_,
                .log = log_,
                .pasteboard = pasteboard_,
                .userDefaults = userDefaults_,
                .userNotificationCenter = userNotificationCenter_} {}

} // namespace brenvale
