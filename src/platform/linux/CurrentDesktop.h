#pragma once

#include <QStringList>

namespace brenvale {

/// The names of the running desktop, the most particular first (XDG_CURRENT_DESKTOP of the Desktop Entry
/// Specification). A child of GNOME's names GNOME too.
[[nodiscard]] inline QStringList currentDesktop() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

} // namespace brenvale
