#pragma once

#include "CommandLine.h"
#include "DemoPhone.h"
#include "DemoScript.h"
#include "Session.h"

#include <QTimer>

#include <chrono>

namespace brenvale::phone {

/// Plays the demo over a session: the script in its time, the seconds of the call, the answers to the
/// desktop. Lives on the main thread, with its event loop. A new link is introduced to the phone; the script
/// just goes on.
class DemoRun {
public:
    DemoRun(Session& session, PlayDemo options);

private:
    void introduce();
    void scheduleNext();
    void playNext();
    void show(const Reaction& reaction);
    [[nodiscard]] std::chrono::milliseconds paced(std::chrono::milliseconds pause) const;

    Session& session_;
    PlayDemo options_;
    DemoPhone phone_;
    QList<DemoStep> script_;
    qsizetype next_ = 0;
    bool isWaitingForCall_ = false;
    QTimer second_;
    QTimer step_;
};

} // namespace brenvale::phone
