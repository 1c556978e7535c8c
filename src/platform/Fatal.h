#pragma once

#include <QByteArrayView>

namespace brenvale {

/// Ends the process for a condition that must not be: behind its last steps `text` goes to standard error and
/// the process aborts.
/// Any thread.
[[noreturn]] void fatal(QByteArrayView text);

} // namespace brenvale
