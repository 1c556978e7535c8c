#pragma once

class QWindow;

namespace brenvale {

/// Whether a window can stand where the program puts it, above everything and without the keyboard: on X11
/// and Xwayland. A compositor of Wayland puts an ordinary window into the middle of the screen and gives it
/// the keyboard, whatever it is called.
[[nodiscard]] bool canFloatWindows();

/// Whether something draws windows over one another, so that what lies below can show through.
[[nodiscard]] bool hasCompositor();

/// Makes `window`, before the desktop knows it, one that no window manager handles: it stays where it is put,
/// above full-screen windows too, on all workspaces, and is never given the keyboard.
void makeFloating(QWindow& window);

} // namespace brenvale
