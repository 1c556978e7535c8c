#pragma once

#include "platform/UserNotificationCenter.h"

#include <QWidget>

#include <functional>

class QLineEdit;

namespace brenvale {

/// The field for an answer to a notification, on desktops whose notifications have none. Return sends, Escape
/// closes. It takes the keyboard focus, as the user has just asked for it. Deletes itself when closed. On
/// main.
class ReplyWindow final : public QWidget {
    Q_OBJECT

public:
    using Send = std::function<void(const QString& text)>;

    /// `content` is what is being answered. `send` gets the text exactly as typed.
    ReplyWindow(const TextInputNotificationAction& action, const NotificationContent& content, Send send);

    /// Shows it in front with the focus in the field, again if it is on show already.
    void present();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void sendAndClose();

    Send send_;
    QLineEdit* field_;
};

} // namespace brenvale
