#pragma once

namespace brenvale {

/// Makes Qt use a display that answers, and work without one where none does: a display that is named but
/// dead counts as none. A platform that the user chose (QT_QPA_PLATFORM) is tried first. Call before the
/// application is made.
void chooseDisplay();

} // namespace brenvale
