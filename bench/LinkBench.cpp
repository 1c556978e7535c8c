// Measures the link end to end over loopback beside the limits of the machine, and prints one table.
// Usage: link-bench [--smoke]

#include "FileStages.h"
#include "LinkLoad.h"
#include "MachineLimits.h"
#include "SenderMemory.h"
#include "Table.h"
#include "platform/linux/ProcessSetup.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

using namespace brenvale;

namespace {

/// The table keeps standard output; the link's log, which is part of what is measured, goes to nowhere.
std::FILE* divertLog() {
    auto* table = ::fdopen(::dup(STDOUT_FILENO), "w");
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    return table;
}

struct Limits {
    bench::LoopbackLimit loopback = bench::loopbackLimit();
    double memoryCopy = bench::memoryCopyBytesPerSecond();
    double roundTrip = bench::loopbackRoundTripMicroseconds();
};

constexpr double million = 1e6;
constexpr double billion = 1e9;
constexpr double base64Growth = 4.0 / 3;
const auto memoryFolder = QStringLiteral("/dev/shm");

void measureMessages(const bench::Table& table, bench::LinkLoad& load, const Limits& limits, int scale) {
    table.heading("Messages");
    table.row("notifications to the store, 1 phone", load.notificationsPerSecond(1, 400'000 / scale),
              "a second");
    table.row("notifications to the store, 8 phones", load.notificationsPerSecond(8, 400'000 / scale),
              "a second");
    const auto roundTrip = load.roundTripMicroseconds(50'000 / scale);
    table.row("round trip by the main thread, median", roundTrip.median, "us", limits.roundTrip);
    table.row("round trip by the main thread, 99th percentile", roundTrip.percentile99, "us",
              limits.roundTrip);
}

/// The stages of an incoming file, and what the link's thread takes for the whole of it.
void measureIncoming(const bench::Table& table, bench::LinkLoad& load, const Limits& limits, int mebibytes,
                     bool escapesSlashes) {
    table.heading(escapesSlashes ? "A file in, every slash of its base64 escaped" : "A file in");
    const double receiving = limits.loopback.receivingSeconds * base64Growth * billion;
    const auto cost = [&](const char* what, double seconds) {
        table.row(what, seconds, "s/GB", receiving);
    };
    const auto stages = bench::incomingStages(mebibytes, escapesSlashes);
    cost("unmask", stages.unmask);
    cost("check of UTF-8", stages.checkUtf8);
    cost("JSON", stages.json);
    cost("base64", stages.base64);
    for (const auto& [what, folder] :
         {std::pair("memory", memoryFolder), std::pair("the home folder", QDir::homePath())}) {
        const auto name = QByteArray(" to ") + what;
        cost("write" + name, bench::writingToFile(mebibytes, folder));
        const auto whole = load.receiveFile(folder, mebibytes, escapesSlashes);
        cost("all of the link's thread, file" + name, whole.linkSecondsForByte * billion);
        table.row("   the file comes at", whole.bytesPerSecond / million, "MB/s",
                  limits.loopback.bytesPerSecond / base64Growth / million);
    }
}

void measureOutgoing(const bench::Table& table, bench::LinkLoad& load, const Limits& limits, int mebibytes) {
    table.heading("A file out");
    const double sending = limits.loopback.sendingSeconds * base64Growth * billion;
    const auto cost = [&](const char* what, double seconds) {
        table.row(what, seconds, "s/GB", sending);
    };
    const auto stages = bench::outgoingStages(mebibytes, memoryFolder);
    cost("read", stages.read);
    cost("encode", stages.encode);
    cost("write to the network, as raw TCP", sending);
    cost("write to the temporary file, beyond 256 MiB", bench::writingToFile(mebibytes, QDir::homePath()));
    for (const auto& [what, size] :
         {std::pair("of 128 MiB", std::max(1, mebibytes / 8)), std::pair("of 1 GiB", mebibytes)}) {
        QTemporaryFile file(memoryFolder + QStringLiteral("/brenvale-bench-XXXXXX"));
        if (!file.open() || !file.resize(qint64{size} << 20)) {
            return;
        }
        const auto outgoing = load.sendFile(file.fileName());
        cost(QByteArray("all of the link's thread, file ") + what, outgoing.linkSecondsForByte * billion);
        table.row("   read and queued after", outgoing.queuedSeconds, "s");
        table.row("   all of it at the phone after", outgoing.sentSeconds, "s");
    }
}

void measureMemory(const bench::Table& table, int mebibytes) {
    table.heading("Memory of a link in a process of its own, around a file of 1 GiB out");
    const auto memory =
        bench::measureSenderMemory(QCoreApplication::applicationFilePath(), mebibytes, memoryFolder);
    table.row("idle", memory.idle, "MiB");
    table.row("peak", memory.peak, "MiB", memory.idle);
    table.row("afterwards", memory.after, "MiB", memory.idle);
}

void measureWaits(const bench::Table& table, bench::LinkLoad& load, int mebibytes) {
    table.heading("Others, while a file comes in to memory");
    const auto waits = load.waitsDuringUpload(memoryFolder, mebibytes);
    table.row("ping of a second phone, median", waits.ping.median, "ms");
    table.row("ping of a second phone, 99th percentile (aim: < 10)", waits.ping.percentile99, "ms");
    table.row("start of a step of the main thread, median", waits.mainStep.median, "ms");
    table.row("   99th percentile (aim: < 16)", waits.mainStep.percentile99, "ms");
}

void showLimits(const bench::Table& table, const Limits& limits) {
    table.heading("Limits of the machine. In rows with an x it is the multiple of the one that fits them:\n"
                  "TCP's time for as many bytes, its rate, its round trip, or the idle memory.");
    table.row("raw TCP over loopback", limits.loopback.bytesPerSecond / million, "MB/s");
    table.row("   receiving base64 of a gigabyte", limits.loopback.receivingSeconds * base64Growth * billion,
              "s/GB");
    table.row("   sending it", limits.loopback.sendingSeconds * base64Growth * billion, "s/GB");
    table.row("raw TCP round trip, median", limits.roundTrip, "us");
    table.row("memory copy", limits.memoryCopy / million, "MB/s");
    table.row("   base64 of a gigabyte", base64Growth * billion / limits.memoryCopy, "s/GB",
              limits.loopback.receivingSeconds * base64Growth * billion);
}

} // namespace

int main(int argc, char* argv[]) {
    setUpProcess();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const bench::Table table(divertLog());
    if (argc > 2 && std::strcmp(argv[1], bench::senderArgument) == 0) {
        bench::sendOneFile(QString::fromLocal8Bit(argv[2]));
    }
    const bool isSmoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int scale = isSmoke ? 100 : 1;
    const int mebibytes = 1024 / scale;
    const Limits limits;
    showLimits(table, limits);
    bench::LinkLoad load(18765);
    measureMessages(table, load, limits, scale);
    measureIncoming(table, load, limits, mebibytes, false);
    measureIncoming(table, load, limits, mebibytes, true);
    measureOutgoing(table, load, limits, mebibytes);
    measureMemory(table, mebibytes);
    measureWaits(table, load, mebibytes);
    return 0;
}
