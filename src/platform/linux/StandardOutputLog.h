#pragma once

#include "platform/Log.h"

namespace brenvale {

/// The log on standard output: each line leaves at once and whole, from whichever thread. A reader that has
/// gone away is no error.
class StandardOutputLog final : public Log {
public:
    void line(QByteArrayView text) override;
};

} // namespace brenvale
