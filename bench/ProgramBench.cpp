// Measures the real program from its start to rest, and prints one table.
// Usage: program-bench PROGRAM [--smoke]
// It wants no display and no bus of its own: what is there is used, as by a person who starts it here.
// Settings and received files are in a folder that goes at the end.

#include "Measuring.h"
#include "Phone.h"
#include "ProcessMemory.h"
#include "StartedProgram.h"
#include "Table.h"

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

using namespace brenvale::bench;
using namespace std::chrono_literals;

namespace {

double wakeUps(pid_t process) {
    const auto tasks = QStringLiteral("/proc/%1/task").arg(process);
    long long total = 0;
    for (const auto& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        total += statusField(tasks + u'/' + task + QStringLiteral("/status"), "voluntary_ctxt_switches");
    }
    return static_cast<double>(total);
}

/// Sends messages and waits until the desktop has read the last: it answers the goodbye behind them.
void sendMessages(const QByteArray& first, int count, const QByteArray& message, const QByteArray& last) {
    brenvale::Phone phone;
    if (!phone.connect(QStringLiteral("127.0.0.1"), programPort())) {
        std::fputs("the program does not answer\n", stderr);
        return;
    }
    phone.sendText(first);
    for (int i = 0; i < count; ++i) {
        phone.sendText(message);
        phone.waitUntilSent(1min);
    }
    phone.sendText(last);
    phone.close(1min);
}

void measureStart(const Table& table, const char* program, int runs) {
    std::vector<double> starts;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        const auto process = startProgram(program);
        waitUntilListening(process);
        starts.push_back(1e3 * secondsSince(start));
        stopProgram(process);
    }
    table.row("start to listening, median", distributionOf(starts).median, "ms");
    table.row("start to listening, slowest", std::ranges::max(starts), "ms");
}

/// Gives the resident memory.
double measureRest(const Table& table, pid_t process, bool isSmoke) {
    std::this_thread::sleep_for(isSmoke ? 100ms : 2000ms);
    const auto before = wakeUps(process);
    std::this_thread::sleep_for(isSmoke ? 100ms : 10000ms);
    table.row("wake-ups of all threads in 10 idle seconds", wakeUps(process) - before, "");
    const double resident = mebibytesOf(process, "VmRSS");
    table.row("idle resident memory", resident, "MiB");
    table.row("   of it anonymous", mebibytesOf(process, "RssAnon"), "MiB");
    return resident;
}

void measureMemoryUnderLoad(const Table& table, pid_t process, double idle, bool isSmoke) {
    const int mebibytes = isSmoke ? 10 : 1024;
    const auto chunk = [](const char* end) {
        return R"({"action":"file_chunk","fileName":"a","fileData":")" + QByteArray(1'398'104, 'A') + end;
    };
    sendMessages(R"({"action":"file_transfer_start","fileName":"a","fileSize":)" +
                     QByteArray::number(qint64{mebibytes} << 20) + '}',
                 mebibytes - 1, chunk("\"}"), chunk(R"(","isLast":true})"));
    const double peak = mebibytesOf(process, "VmHWM");
    table.row("peak memory while a file of 1 GiB comes in", peak, "MiB");
    table.row("   above the idle one (aim: < 32)", peak - idle, "MiB");
    table.row("   resident afterwards", mebibytesOf(process, "VmRSS"), "MiB");
    sendMessages(R"({"action":"unknown","text":")" + QByteArray(isSmoke ? 1 << 20 : 100 << 20, 'A') + "\"}",
                 0, {}, "{}");
    table.row("peak memory after a message of 100 MiB", mebibytesOf(process, "VmHWM"), "MiB");
    table.row("   resident afterwards", mebibytesOf(process, "VmRSS"), "MiB");
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fputs("usage: program-bench PROGRAM [--smoke]\n", stderr);
        return 2;
    }
    const bool isSmoke = argc > 2 && std::strcmp(argv[2], "--smoke") == 0;
    const QTemporaryDir folder;
    writeSettings(folder.path());
    const Table table(stdout);
    measureStart(table, argv[1], isSmoke ? 1 : 11);
    const auto process = startProgram(argv[1]);
    waitUntilListening(process);
    const double idle = measureRest(table, process, isSmoke);
    measureMemoryUnderLoad(table, process, idle, isSmoke);
    stopProgram(process);
    return 0;
}
