#pragma once

#include "PhoneMessages.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace brenvale::phone {

/// Turns what somebody types on a terminal into remote commands: arrow keys and the like, text, and in the
/// mouse's mode moves and clicks. Knows nothing of terminals, so a pipe serves as well. One thread.
class RemotePad {
public:
    enum class Mode : quint8 { keyboard, mouse };

    /// The commands of some more bytes. A sequence that is not whole yet is kept.
    [[nodiscard]] QList<RemoteCommand> take(QByteArrayView bytes);

    /// Nothing has come for a moment: what is kept was no beginning of a sequence but the key Escape.
    [[nodiscard]] QList<RemoteCommand> takePause();

    /// Whether a sequence may be under way.
    [[nodiscard]] bool isUnfinished() const { return !unread_.isEmpty(); }

    /// Whether the key that ends the pad was pressed; what came behind it is left over.
    [[nodiscard]] bool isOver() const { return isOver_; }
    [[nodiscard]] QByteArray leftOver() { return std::exchange(unread_, {}); }

    [[nodiscard]] Mode mode() const { return mode_; }

    /// What the keys do.
    [[nodiscard]] static QString help();

private:
    bool takeOne();
    bool takeSequence();
    bool takeText();
    void takeControl(char byte);
    void finishSequence(QByteArrayView parameters, char end);
    void mouseKey(char byte);
    void click(const QString& button);

    QByteArray unread_;
    QList<RemoteCommand> commands_;
    Mode mode_ = Mode::keyboard;
    bool isOver_ = false;
};

} // namespace brenvale::phone
