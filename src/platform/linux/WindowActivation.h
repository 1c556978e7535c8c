#pragma once

class QWindow;

namespace brenvale {

/// Brings a window to the front and gives it the keyboard focus because the user has just asked for it by
/// other means than one of our windows, which window managers cannot know by themselves.
void activateWindowForUser(QWindow& window);

} // namespace brenvale
