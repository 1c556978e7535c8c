#include "platform/Fatal.h"

#include "platform/LastSteps.h"
#include "platform/StandardError.h"

#include <cstdlib>

namespace brenvale {

void fatal(QByteArrayView text) {
    constexpr std::chrono::seconds patience{2};
    runLastSteps();
    complain(text, patience);
    std::abort();
}

} // namespace brenvale
