#pragma once

#include <QByteArrayView>

namespace brenvale {

/// The log that people see. Lines are whole and carry their component at the head ("[WebSocketServer] ").
/// Any thread.
class Log {
public:
    virtual ~Log() = default;

    /// Writes `text` (UTF-8, without a line end) as one line, at once.
    virtual void line(QByteArrayView text) = 0;
};

} // namespace brenvale
