#pragma once

#include <QString>

namespace brenvale {

// How the desktop's portals are reached (https://flatpak.github.io/xdg-desktop-portal).
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString remoteDesktopInterface = QStringLiteral("org.freedesktop.portal.RemoteDesktop");

/// How long a portal that is still starting may take for an answer, in milliseconds. The user may take
/// longer: a dialog is no such answer.
inline constexpr int portalPatience = 120'000;

} // namespace brenvale
