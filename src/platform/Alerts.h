#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace brenvale {

/// A question that the user answers with one of its buttons.
struct Alert {
    enum class Style : qint8 { informational, warning };

    Style style = Style::informational;
    QString messageText;
    QString informativeText; ///< may have several paragraphs
    QStringList buttons;     ///< the first is the default, the last is what Escape and closing mean

    static constexpr int firstButtonReturn = 1000; ///< the response of the first button; the others follow
};

/// Shows alerts. On main.
class Alerts {
public:
    using Answer = std::move_only_function<void(int response)>;

    virtual ~Alerts() = default;

    /// Shows `alert` in front of everything, modal to the program, and returns at once; `answer` gets the
    /// response. Without a display the alert is one line on standard error, and the answer that of the last
    /// button.
    virtual void runModal(const Alert& alert, Answer answer) = 0;
};

} // namespace brenvale
