// Measures the link end to end over loopback beside the limits of the machine, and prints one table.
// Usage: link-bench [--smoke]

#include "LinkLoad.h"
#include "MachineLimits.h"
#include "platform/linux/ProcessSetup.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace brenvale;

namespace {

/// The table keeps standard output; the link's log, which is part of what is measured, goes to nowhere.
std::FILE* divertLog() {
    auto* table = ::fdopen(::dup(STDOUT_FILENO), "w");
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    return table;
}

double peakMebibytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

} // namespace

int main(int argc, char* argv[]) {
    setUpProcess();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const bool isSmoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int scale = isSmoke ? 100 : 1;
    auto* table = divertLog();
    const auto row = [table](const char* what, double value, const char* unit) {
        std::fprintf(table, "%-58s %12.1f %s\n", what, value, unit);
        std::fflush(table);
    };
    constexpr double million = 1e6;

    const double loopback = bench::loopbackBytesPerSecond();
    row("limit: raw TCP over loopback", loopback / million, "MB/s");
    row("limit: memory copy", bench::memoryCopyBytesPerSecond() / million, "MB/s");
    row("limit: raw TCP round trip, median", bench::loopbackRoundTripMicroseconds(), "us");

    bench::LinkLoad load(18765);
    row("notifications to the store, 1 phone", load.notificationsPerSecond(1, 400'000 / scale), "a second");
    row("notifications to the store, 8 phones", load.notificationsPerSecond(8, 400'000 / scale), "a second");
    const auto roundTrip = load.roundTripMicroseconds(50'000 / scale);
    row("round trip by the main thread, median", roundTrip.median, "us");
    row("round trip by the main thread, 99th percentile", roundTrip.percentile99, "us");
    const double in = load.bytesPerSecondIn(1000 / scale);
    row("file chunks in: read, parsed, dispatched; payload", in / million, "MB/s");
    row("   share of raw TCP, counting base64's third", 100 * in * 4 / 3 / loopback, "%");
    row("peak memory so far, load generator included", peakMebibytes(), "MiB");
    const double out = load.bytesPerSecondOut(500 / scale);
    row("file chunks out to one phone; payload", out / million, "MB/s");
    row("   share of raw TCP, counting base64's third", 100 * out * 4 / 3 / loopback, "%");
    return 0;
}
