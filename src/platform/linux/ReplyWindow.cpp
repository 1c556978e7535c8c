#include "platform/linux/ReplyWindow.h"

#include "platform/linux/DialogLook.h"
#include "platform/linux/WindowActivation.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

namespace brenvale {

namespace {

constexpr int padding = 16;
constexpr int spacing = 8;
constexpr int textWidth = 400;
constexpr int longestReply = 1'000'000;

constexpr int linesOfMessage = 4;

/// What is being answered, cut with an ellipsis where it is too long.
QLabel* reminder(const QString& text, int mostLines, QFont::Weight weight, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(textWidth);
    label->ensurePolished();
    auto font = label->font();
    font.setWeight(weight);
    label->setFont(font);
    label->setText(wrapped(text, font, textWidth, mostLines));
    label->setVisible(!text.isEmpty());
    return label;
}

} // namespace

ReplyWindow::ReplyWindow(const TextInputNotificationAction& action, const NotificationContent& content,
                         Send send)
    : QWidget(nullptr, Qt::Dialog), send_(std::move(send)), field_(new QLineEdit(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(action.title);
    useProgramIcon(*this);

    field_->setPlaceholderText(action.textInputPlaceholder);
    field_->setAccessibleName(action.title);
    field_->setMaxLength(longestReply);
    connect(field_, &QLineEdit::returnPressed, this, &ReplyWindow::sendAndClose);
    auto* button = new QPushButton(action.textInputButtonTitle, this);
    makeProminent(*button);
    connect(button, &QPushButton::clicked, this, &ReplyWindow::sendAndClose);

    auto* inputRow = new QHBoxLayout;
    inputRow->setSpacing(spacing);
    inputRow->addWidget(field_, 1);
    inputRow->addWidget(button);

    const bool hasSubtitle = !content.subtitle.isEmpty();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(padding, padding, padding, padding);
    rows->setSpacing(spacing);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addWidget(reminder(hasSubtitle ? content.subtitle : content.title, 1, QFont::DemiBold, this));
    rows->addWidget(reminder(content.body, linesOfMessage, QFont::Normal, this));
    rows->addSpacing(spacing);
    rows->addLayout(inputRow);
}

void ReplyWindow::present() {
    if (QApplication::activeModalWidget() != nullptr) {
        setWindowModality(
            Qt::ApplicationModal); // or an alert that nobody has answered would keep the keyboard
    }
    show();
    activateWindowForUser(*windowHandle());
    field_->setFocus(Qt::ActiveWindowFocusReason);
}

void ReplyWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ReplyWindow::sendAndClose() {
    if (const auto send = std::exchange(send_, {})) { // keys that were typed ahead come here again
        send(field_->text());
        close();
    }
}

} // namespace brenvale
