#include "platform/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace brenvale {

void fatal(QByteArrayView text) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    std::abort();
}

} // namespace brenvale
