#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace brenvale::bench {

/// A number in a status file of /proc, 0 where it is missing.
[[nodiscard]] long long statusField(const QString& file, const QByteArray& field);

/// A size that the system keeps of a process, such as "VmRSS" (resident now) or "VmHWM" (its peak).
[[nodiscard]] double mebibytesOf(pid_t process, const QByteArray& field);

} // namespace brenvale::bench
