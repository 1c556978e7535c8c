#pragma once

#include <QDir>

#include <sys/types.h>

namespace brenvale::bench {

/// Where the measured program listens: a port that was free when this was first called.
[[nodiscard]] unsigned short programPort();

/// Has the programs that are started from here on find their settings and their Downloads folder in `folder`.
void writeSettings(const QDir& folder);

/// Runs the program with its log going to nowhere. Where that fails the process ends.
[[nodiscard]] pid_t startProgram(const char* program);
void stopProgram(pid_t process);

/// Where the program has ended instead, so does this process.
void waitUntilListening(pid_t process);

} // namespace brenvale::bench
