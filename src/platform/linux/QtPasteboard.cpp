#include "platform/linux/QtPasteboard.h"

#include "platform/linux/X11Connection.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>
#include <QWindow>

#include <chrono>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

constexpr int tries = 10;
constexpr std::chrono::milliseconds pauseBetweenTries{5};

} // namespace

QtPasteboard::QtPasteboard() = default;
QtPasteboard::~QtPasteboard() = default;

void QtPasteboard::clearContents() {
    QGuiApplication::clipboard()->clear();
}

void QtPasteboard::setString(const QString& text) {
    ++offers_;
    offer(text, tries);
}

void QtPasteboard::offer(const QString& text, int triesLeft) {
    auto* clipboard = QGuiApplication::clipboard();
    clipboard->setText(text);
    if (x11Connection() == nullptr || clipboard->ownsClipboard() || triesLeft == 0) {
        return;
    }
    bringTimeUpToDate();
    QTimer::singleShot(pauseBetweenTries, clipboard, [this, text, triesLeft, number = offers_] {
        if (number == offers_) {
            offer(text, triesLeft - 1);
        }
    });
}

/// A change of a property of our own comes back as an event with the server's time.
void QtPasteboard::bringTimeUpToDate() {
    if (!clock_) {
        clock_ = std::make_unique<QWindow>();
        clock_->create();
    }
    auto* connection = x11Connection();
    constexpr int bitsOfACharacter = 8;
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, static_cast<xcb_window_t>(clock_->winId()),
                        XCB_ATOM_WM_NAME, XCB_ATOM_STRING, bitsOfACharacter, 0, nullptr);
    xcb_flush(connection);
}

/// Files alone are no text, though the toolkit would write their addresses out.
void QtPasteboard::string(TextAnswer answer) {
    const auto* contents = QGuiApplication::clipboard()->mimeData();
    const bool isText = contents != nullptr && contents->hasFormat(QStringLiteral("text/plain"));
    answer(isText ? std::optional(contents->text()) : std::nullopt);
}

} // namespace brenvale
