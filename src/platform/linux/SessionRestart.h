#pragma once

class QGuiApplication;

namespace brenvale {

/// Tells the session manager of X11 how the program comes back at the next login, where the session is
/// restored: without a window, as at each login. A logout itself is answered by the toolkit at once, as there
/// is nothing to save and nothing to ask.
void comeBackInBackground(QGuiApplication& application);

} // namespace brenvale
