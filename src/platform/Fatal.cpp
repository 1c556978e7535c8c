#include "platform/Fatal.h"

#include "platform/LastSteps.h"

#include <cstdio>
#include <cstdlib>

namespace brenvale {

void fatal(QByteArrayView text) {
    runLastSteps();
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    std::abort();
}

} // namespace brenvale
