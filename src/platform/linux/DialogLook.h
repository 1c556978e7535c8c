#pragma once

#include <QString>

class QFont;
class QPushButton;
class QWidget;

/// How the few windows of the toolkit's own controls look like the main window. All on main.
namespace brenvale {

/// Gives a window the program's icon.
void useProgramIcon(QWidget& window);

/// The button that does what the window is for: filled with the tint, so deep that its text can be read.
void makeProminent(QPushButton& button);

/// The button beside it.
void makePlain(QPushButton& button);

/// `text` in lines of at most `width`, with an ellipsis where it takes more than `mostLines`.
[[nodiscard]] QString wrapped(const QString& text, const QFont& font, int width, int mostLines);

} // namespace brenvale
