#include "platform/linux/LinuxPlatform.h"

#include <utility>

namespace brenvale {

LinuxPlatform::LinuxPlatform(DispatchQueue& main, InputWays input)
    : eventPoster_(std::move(input.ways)),
      accessibilityTrust_(eventPoster_, input.consent),
      scriptRunner_(main),
      userNotificationCenter_(main),
      platform_{.accessibilityTrust = accessibilityTrust_,
                .alerts = alerts_,
                .clock = clock_,
                .computerName = computerName_,
                .downloads = downloads_,
                .eventPoster = eventPoster_,
                .fileViewer = fileViewer_,
                .internalNotifications = internalNotifications_,
                .log = log_,
                .loginItem = loginItem_,
                .pasteboard = pasteboard_,
                .scriptRunner = scriptRunner_,
                .statusItem = statusItem_,
                .systemSettings = systemSettings_,
                .userDefaults = userDefaults_,
                .userNotificationCenter = userNotificationCenter_} {}

} // namespace brenvale
