#include "platform/linux/LinuxPlatform.h"

#include "platform/LastSteps.h"

#include <utility>

namespace brenvale {

namespace {

std::unique_ptr<ClipboardService> clipboardOf(DispatchQueue& main, Display::Kind kind) {
    using Session = ClipboardService::Session;
    auto session = Session::none;
    if (kind == Display::Kind::wayland) {
        session = Session::wayland;
    } else if (kind == Display::Kind::x11) {
        session = Session::x11;
    }
    return std::make_unique<ClipboardService>(main, session);
}

} // namespace

LinuxPlatform::LinuxPlatform(DispatchQueue& main, const Display& display,
                             const QProcessEnvironment& environment)
    : childPrograms_(environment),
      clipboard_(clipboardOf(main, display.kind)),
      input_(inputWays(display, main, clipboard_.get())),
      eventPoster_(std::move(input_.ways)),
      accessibilityTrust_(eventPoster_, input_.consent),
      pasteboard_(main, *clipboard_),
      scriptRunner_(main, childPrograms_),
      userNotificationCenter_(main, childPrograms_),
      platform_{.accessibilityTrust = accessibilityTrust_,
                .addressWatch = addressWatch_,
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
                .systemSleep = systemSleep_,
                .userDefaults = userDefaults_,
                .userNotificationCenter = userNotificationCenter_} {
    setLastSteps([this] {
        if (input_.putBack) {
            input_.putBack();
        }
        log_.flush();
    });
}

LinuxPlatform::~LinuxPlatform() {
    setLastSteps({});
}

} // namespace brenvale
