#pragma once

#include "RawTerminal.h"
#include "RemotePad.h"
#include "Session.h"

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <memory>

namespace brenvale::phone {

/// Reads commands from standard input, one a line, and carries them out over a session; after "pad" each key
/// goes to the desktop. Ends the program at "quit" or at the end of the input; the exit code then tells
/// whether all commands were good. Lives on the main thread, with its event loop.
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
    bool isLinked(); ///< the lack of a link is told
    void startPad();
    void feedPad(const QByteArray& bytes);
    void sendPadCommands(const QList<RemoteCommand>& commands);
    void endPad();
    void fail(const QString& error);
    void prompt() const;
    void end();

    Session& session_;
    QSocketNotifier input_;
    /// While keys go to the desktop.
    struct Pad {
        RawTerminal terminal;
        RemotePad keys;
    };
    std::unique_ptr<Pad> pad_;
    QTimer padPause_; ///< tells the key Escape from the beginning of another key

    QByteArray unread_; ///< what was read and not yet carried out
    bool isInputOver_ = false;
    bool isWaiting_ = false;
    bool isEnding_ = false;
    bool hasFailed_ = false;
    bool isInteractive_;
};

} // namespace brenvale::phone
