#pragma once

#include <QByteArray>

namespace brenvale {

/// The session's display, and whether it takes keys and pointer events that a program posts.
struct Display {
    enum class Kind : signed char { none, x11, wayland };

    Kind kind = Kind::none;
    bool takesEvents = false;   ///< X11: XTEST; Wayland: the virtual keyboard and pointer of wlroots
    bool hasLayerShell = false; ///< Wayland: a surface can float above windows
    QByteArray userChoice;      ///< QT_QPA_PLATFORM as the user set it
};

/// Makes Qt use a display that answers, and work without one where none does: a display that is named but
/// dead, or that has not answered within some seconds, counts as none. A platform that the user chose
/// (QT_QPA_PLATFORM) is tried first. Call before the application is made.
Display chooseDisplay();

/// Takes the choice out of the environment again, so that programs that we start make their own. Call when
/// the application is made.
void restoreEnvironment(const Display& display);

} // namespace brenvale
