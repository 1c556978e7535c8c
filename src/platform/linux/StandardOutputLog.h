#pragma once

#include "platform/Log.h"
#include "platform/linux/LineWriter.h"

#include <unistd.h>

namespace brenvale {

/// The log on standard output, unbuffered: each line leaves at once and whole, from whichever thread, and
/// where nobody reads it waits without holding anybody up.
class StandardOutputLog final : public Log {
public:
    void line(QByteArrayView text) override { writer_.line(text); }

    /// Before the process ends: waits until all lines so far have left, as long as somebody reads them.
    void flush() { writer_.flush(); }

private:
    LineWriter writer_{STDOUT_FILENO};
};

} // namespace brenvale
