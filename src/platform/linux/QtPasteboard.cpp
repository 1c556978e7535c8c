#include "platform/linux/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace brenvale {

void QtPasteboard::clearContents() {
    QGuiApplication::clipboard()->clear();
}

void QtPasteboard::setString(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace brenvale
