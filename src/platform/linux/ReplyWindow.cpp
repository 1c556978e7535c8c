#include "platform/linux/ReplyWindow.h"

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

/// One line of the notification that is being answered, cut with an ellipsis where it is too long.
QLabel* reminderLine(const QString& text, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(textWidth);
    label->ensurePolished();
    label->setText(label->fontMetrics().elidedText(text.simplified(), Qt::ElideRight, textWidth));
    label->setVisible(!text.isEmpty());
    return label;
}

QLabel* heading(const QString& text, QWidget* parent) {
    auto* label = reminderLine(text, parent);
    auto font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    label->setText(QFontMetrics(font).elidedText(text.simplified(), Qt::ElideRight, textWidth));
    return label;
}

} // namespace

ReplyWindow::ReplyWindow(const TextInputNotificationAction& action, const NotificationContent& content,
                         Send send)
    : QWidget(nullptr, Qt::Dialog), send_(std::move(send)), field_(new QLineEdit(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(action.title);

    field_->setPlaceholderText(action.textInputPlaceholder);
    field_->setAccessibleName(action.title);
    field_->setMaxLength(longestReply);
    connect(field_, &QLineEdit::returnPressed, this, &ReplyWindow::sendAndClose);
    auto* button = new QPushButton(action.textInputButtonTitle, this);
    button->setAutoDefault(true);
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
    rows->addWidget(heading(hasSubtitle ? content.subtitle : content.title, this));
    rows->addWidget(reminderLine(content.body, this));
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
