#pragma once

#include <QString>

namespace brenvale::bench {

/// Memory of a process that holds the link and nothing of the load, in MiB.
struct SenderMemory {
    double idle;
    double peak;  ///< up to the end of the file
    double after; ///< when the phone has the whole file
};

/// Sends a file of `mebibytes` from such a process, a child of this one, to a phone in this one.
[[nodiscard]] SenderMemory measureSenderMemory(const QString& program, int mebibytes, const QString& folder);

/// What the child does.
[[noreturn]] void sendOneFile(const QString& path);

/// The argument that makes a program such a child; the path of the file follows it.
inline constexpr auto senderArgument = "--send-file";

} // namespace brenvale::bench
