#pragma once

#include "Session.h"

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>

namespace brenvale::phone {

/// Reads commands from standard input, one a line, and carries them out over a session. Ends the program at
/// "quit" or at the end of the input; the exit code then tells whether all commands were good. Lives on the
/// main thread, with its event loop.
class Shell {
public:
    explicit Shell(Session& session);

    /// Begins to read; to be called when the session has started.
    void start();

private:
    void readInput();
    void runLines();
    void run(const QString& line);
    void wait(const QString& seconds);
    void send(const QStringList& words);
    void fail(const QString& error);
    void prompt() const;
    void end();

    Session& session_;
    QSocketNotifier input_;
    QByteArray unread_; ///< what was read and not yet carried out
    bool isInputOver_ = false;
    bool isWaiting_ = false;
    bool isEnding_ = false;
    bool hasFailed_ = false;
    bool isInteractive_;
};

} // namespace brenvale::phone
