#include "platform/linux/ProcessSetup.h"

#include <QLoggingCategory>

#include <csignal>
#include <cstdio>

#include <malloc.h>

namespace brenvale {

namespace {

// By default the C library raises its limit for separate blocks with each large one that is freed, and keeps
// later ones. These limits let file chunks reuse the heap and return everything larger.
constexpr int separateBlockSize = 4 << 20;
constexpr int keptHeapTop = 8 << 20;

} // namespace

void setUpProcess() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    std::signal(SIGPIPE, SIG_IGN);
    // Diagnostics are for who asks for them, by QT_LOGGING_RULES.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false\n*.warning=false"));
    mallopt(M_MMAP_THRESHOLD, separateBlockSize);
    mallopt(M_TRIM_THRESHOLD, keptHeapTop);
}

} // namespace brenvale
