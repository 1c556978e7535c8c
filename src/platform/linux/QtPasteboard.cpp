#include "platform/linux/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace brenvale {

void QtPasteboard::clearContents() {
    QGuiApplication::clipboard()->clear();
}

void QtPasteboard::setString(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

/// Files alone are no text, though the toolkit would write their addresses out.
void QtPasteboard::string(TextAnswer answer) {
    const auto* contents = QGuiApplication::clipboard()->mimeData();
    const bool isText = contents != nullptr && contents->hasFormat(QStringLiteral("text/plain"));
    answer(isText ? std::optional(contents->text()) : std::nullopt);
}

} // namespace brenvale
