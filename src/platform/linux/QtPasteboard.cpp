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

std::optional<QString> QtPasteboard::string() const {
    const auto* contents = QGuiApplication::clipboard()->mimeData();
    return contents != nullptr && contents->hasText() ? std::optional(contents->text()) : std::nullopt;
}

} // namespace brenvale
