#include "Shell.h"

#include <QCoreApplication>
#include <QTimer>

#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <utility>

namespace brenvale::phone {

namespace {

constexpr std::chrono::milliseconds escapePause{50};

} // namespace

Shell::Shell(Session& session)
    : session_(session),
      input_(STDIN_FILENO, QSocketNotifier::Read),
      isInteractive_(::isatty(STDIN_FILENO) == 1) {
    input_.setEnabled(false);
    QObject::connect(&input_, &QSocketNotifier::activated, &input_, [this] { readInput(); });
    padPause_.setSingleShot(true);
    padPause_.setInterval(escapePause);
    QObject::connect(&padPause_, &QTimer::timeout, &padPause_, [this] {
        if (pad_) {
            sendPadCommands(pad_->keys.takePause());
        }
    });
}

void Shell::start() {
    prompt();
    input_.setEnabled(true);
}

void Shell::readInput() {
    std::array<char, 4096> bytes{};
    const auto size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size < 0 && errno == EINTR) {
        return;
    }
    if (size > 0 && pad_) {
        feedPad(QByteArray(bytes.data(), size));
    } else if (size > 0) {
        unread_.append(bytes.data(), size);
    } else {
        // The last line may lack its end.
        isInputOver_ = true;
        input_.setEnabled(false);
        unread_.append('\n');
        endPad();
    }
    if (!isWaiting_) {
        runLines();
    }
}

void Shell::runLines() {
    while (!isWaiting_ && !isEnding_ && !pad_) {
        const qsizetype length = unread_.indexOf('\n');
        if (length < 0) {
            break;
        }
        const QString line = QString::fromUtf8(unread_.first(length)).trimmed();
        unread_.remove(0, length + 1);
        run(line);
    }
    if (isWaiting_ || isEnding_ || pad_) {
        return;
    }
    if (isInputOver_) {
        end();
    } else {
        prompt();
    }
}

void Shell::run(const QString& line) {
    const QStringList words = wordsOfLine(line);
    if (words.isEmpty() || line.startsWith(QLatin1Char('#'))) {
        return;
    }
    const QString& word = words.constFirst();
    if (word == QLatin1String("quit")) {
        end();
    } else if (word == QLatin1String("help")) {
        print(singleCommandsHelp() +
              QStringLiteral("  pad         keys of this terminal go to the desktop, until Ctrl-D\n"
                             "  wait        SECONDS\n  help\n  quit"));
    } else if (word == QLatin1String("wait")) {
        wait(words.value(1));
    } else if (word == QLatin1String("pad")) {
        startPad();
    } else {
        send(words);
    }
}

void Shell::wait(const QString& seconds) {
    bool isNumber = false;
    const double value = seconds.toDouble(&isNumber);
    if (!isNumber || value < 0 || value > 86400) {
        fail(QStringLiteral("wait: takes seconds, at most a day"));
        return;
    }
    isWaiting_ = true;
    QTimer::singleShot(std::chrono::milliseconds(static_cast<qint64>(value * 1000)), &input_, [this] {
        isWaiting_ = false;
        runLines();
    });
}

void Shell::send(const QStringList& words) {
    const auto sending = readSingleCommand(words);
    if (!sending) {
        fail(sending.error());
        return;
    }
    if (!isLinked()) {
        return;
    }
    if (const auto sent = sendAll(session_.phone(), *sending); !sent) {
        fail(sent.error());
    }
}

bool Shell::isLinked() {
    const bool isLinked = session_.phone().isConnected();
    if (!isLinked) {
        fail(QStringLiteral("there is no link to the desktop"));
    }
    return isLinked;
}

void Shell::startPad() {
    if (!isLinked()) {
        return;
    }
    if (isInteractive_) {
        print(RemotePad::help());
    }
    pad_ = std::make_unique<Pad>();
    feedPad(std::exchange(unread_, {}));
}

void Shell::feedPad(const QByteArray& bytes) {
    padPause_.stop();
    const auto mode = pad_->keys.mode();
    sendPadCommands(pad_->keys.take(bytes));
    if (isInteractive_ && pad_->keys.mode() != mode) {
        print(pad_->keys.mode() == RemotePad::Mode::mouse ? QStringLiteral("The arrows move the pointer.")
                                                          : QStringLiteral("Keys type."));
    }
    if (pad_->keys.isOver()) {
        endPad();
    } else if (pad_->keys.isUnfinished()) {
        padPause_.start();
    }
}

void Shell::sendPadCommands(const QList<RemoteCommand>& commands) {
    for (const auto& command : commands) {
        if (!isLinked()) {
            return;
        }
        session_.phone().sendText(remoteControlMessage(command));
    }
}

/// What came behind the end of the pad are lines again.
void Shell::endPad() {
    if (!pad_) {
        return;
    }
    if (isInputOver_) { // what looked unfinished was all there is
        sendPadCommands(pad_->keys.takePause());
    }
    unread_.prepend(pad_->keys.leftOver());
    pad_.reset();
    padPause_.stop();
}

void Shell::fail(const QString& error) {
    hasFailed_ = true;
    printError(error);
}

void Shell::prompt() const {
    if (isInteractive_) {
        std::fputs("phone> ", stdout);
        std::fflush(stdout);
    }
}

// Somebody who types sees the errors; a script hears of them by the exit code.
void Shell::end() {
    isEnding_ = true;
    input_.setEnabled(false);
    QCoreApplication::exit(hasFailed_ && !isInteractive_ ? 1 : 0);
}

} // namespace brenvale::phone
