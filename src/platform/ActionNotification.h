#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace brenvale {

/// One desktop notification that stays until it is taken away and offers buttons. No call blocks. On main.
class ActionNotification {
public:
    /// Plain text; the back end escapes where its desktop needs it.
    struct Content {
        QString title;
        QString body;
        QStringList actions; ///< the buttons' titles

        bool operator==(const Content&) const = default;
    };

    /// Takes it away.
    virtual ~ActionNotification() = default;

    /// The user pressed the button of that title.
    std::function<void(const QString& action)> pressed;

    /// Shows it, or changes it in place while it is on show.
    virtual void show(const Content& content) = 0;

    /// Takes it away. Does nothing while it is not on show.
    virtual void close() = 0;
};

} // namespace brenvale
