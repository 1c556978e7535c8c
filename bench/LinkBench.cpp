// Measures the link end to end over loopback beside the limits of the machine, and prints one table.
// Usage: link-bench [--smoke]

#include "LinkLoad.h"
#include "MachineLimits.h"
#include "platform/linux/ProcessSetup.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryFile>

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

double residentMebibytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    const auto pages = file.open(QFile::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() : 0;
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
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
    const int mebibytes = 1024 / scale;
    const auto fileRow = [&](const char* what, const QString& folder, bool escapes) {
        const double rate = load.incomingFileBytesPerSecond(folder, mebibytes, escapes);
        row(what, rate / million, "MB/s");
        row("   share of raw TCP, counting base64's third", 100 * rate * 4 / 3 / loopback, "%");
    };
    const auto memoryFolder = QStringLiteral("/dev/shm");
    const auto diskFolder = QDir::homePath();
    fileRow("file of 1 GiB in, to memory", memoryFolder, false);
    fileRow("   the same with every slash escaped", memoryFolder, true);
    fileRow("file of 1 GiB in, to the home folder", diskFolder, false);
    row("peak memory so far, load generator included", peakMebibytes(), "MiB");

    QTemporaryFile file(memoryFolder + QStringLiteral("/brenvale-bench-XXXXXX"));
    if (file.open() && file.resize(qint64{mebibytes} << 20)) {
        const auto outgoing = load.sendFile(file.fileName());
        row("file of 1 GiB out: read and queued after", outgoing.queuedSeconds, "s");
        row("   all of it at the phone after", outgoing.sentSeconds, "s");
        row("   resident now, load generator included", residentMebibytes(), "MiB");
        row("   peak", peakMebibytes(), "MiB");
    }
    return 0;
}
