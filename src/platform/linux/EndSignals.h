#pragma once

namespace brenvale {

/// From now on the signals that ask a process to end (SIGTERM, SIGINT, SIGHUP) have its last steps done
/// first, by a thread of their own, so that a main thread at work delays nothing. The end is theirs all the
/// same, and a second signal ends the process at once. Signals that are ignored stay so.
void runLastStepsBeforeEndSignals();

} // namespace brenvale
