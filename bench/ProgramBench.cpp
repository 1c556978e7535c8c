// Measures the real program from its start to rest, and prints one table. Usage: program-bench PROGRAM
// [--smoke] It wants no display and no bus of its own: what is there is used, as by a person who starts it
// here.

#include "Phone.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr unsigned short port = 18766;

pid_t startProgram(const char* program) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const char* arguments[] = {program, nullptr};
    if (posix_spawn(&process, program, &actions, nullptr, const_cast<char* const*>(arguments), environ) !=
        0) {
        std::perror(program);
        std::exit(1);
    }
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

void waitUntilListening() {
    boost::asio::io_context context;
    boost::system::error_code error;
    do {
        boost::asio::ip::tcp::socket socket(context);
        socket.connect({boost::asio::ip::address_v4::loopback(), port}, error);
        if (error) {
            std::this_thread::sleep_for(500us);
        }
    } while (error);
}

/// The sum of one field of the status of all threads, or the process's own.
long long statusField(const QString& file, const QByteArray& field) {
    QFile status(file);
    if (!status.open(QFile::ReadOnly)) {
        return 0;
    }
    for (const auto& line : status.readAll().split('\n')) {
        if (line.startsWith(field + ':')) {
            return line.mid(field.size() + 1).simplified().split(' ').first().toLongLong();
        }
    }
    return 0;
}

long long wakeUps(pid_t process) {
    const auto tasks = QStringLiteral("/proc/%1/task").arg(process);
    long long total = 0;
    for (const auto& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        total += statusField(tasks + u'/' + task + QStringLiteral("/status"), "voluntary_ctxt_switches");
    }
    return total;
}

void printMemory(const char* what, pid_t process, const QByteArray& field) {
    const auto kibibytes = statusField(QStringLiteral("/proc/%1/status").arg(process), field);
    std::printf("%-58s %12.1f MiB\n", what, static_cast<double>(kibibytes) / 1024);
}

/// Sends `count` messages and waits until the desktop has read the last: it answers the goodbye behind them.
void sendMessages(int count, const QByteArray& message) {
    brenvale::Phone phone;
    if (!phone.connect(QStringLiteral("127.0.0.1"), port)) {
        std::fputs("the program does not answer\n", stderr);
        return;
    }
    for (int i = 0; i < count; ++i) {
        phone.sendText(message);
        phone.waitUntilSent(1min);
    }
    phone.close(1min);
}

void measureMemoryUnderLoad(pid_t process, bool isSmoke) {
    const auto chunk =
        R"({"action":"file_chunk","fileName":"a","fileData":")" + QByteArray(1'398'104, 'A') + "\"}";
    sendMessages(isSmoke ? 5 : 500, chunk);
    printMemory("peak memory after 500 MiB of file chunks", process, "VmHWM");
    sendMessages(1,
                 R"({"action":"unknown","text":")" + QByteArray(isSmoke ? 1 << 20 : 100 << 20, 'A') + "\"}");
    printMemory("peak memory after a message of 100 MiB", process, "VmHWM");
    printMemory("   resident afterwards", process, "VmRSS");
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fputs("usage: program-bench PROGRAM [--smoke]\n", stderr);
        return 2;
    }
    const bool isSmoke = argc > 2 && std::strcmp(argv[2], "--smoke") == 0;
    const QTemporaryDir settings;
    QDir(settings.path()).mkpath(QStringLiteral("brenvale"));
    QFile file(settings.filePath(QStringLiteral("brenvale/brenvale.conf")));
    if (!file.open(QFile::WriteOnly) ||
        file.write("[General]\nport=" + QByteArray::number(port) + "\n") < 0) {
        return 1;
    }
    file.close();
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());

    std::vector<double> starts;
    for (int run = 0; run < (isSmoke ? 1 : 11); ++run) {
        const auto start = Clock::now();
        const auto process = startProgram(argv[1]);
        waitUntilListening();
        starts.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        ::kill(process, SIGTERM);
        ::waitpid(process, nullptr, 0);
    }
    std::ranges::sort(starts);
    std::printf("%-58s %12.1f ms\n", "start to listening, median", starts[starts.size() / 2]);
    std::printf("%-58s %12.1f ms\n", "start to listening, slowest", starts.back());

    const auto process = startProgram(argv[1]);
    waitUntilListening();
    std::this_thread::sleep_for(isSmoke ? 100ms : 2000ms);
    const auto before = wakeUps(process);
    std::this_thread::sleep_for(isSmoke ? 100ms : 10000ms);
    std::printf("%-58s %12lld\n", "wake-ups of all threads in 10 idle seconds", wakeUps(process) - before);
    printMemory("idle resident memory", process, "VmRSS");
    printMemory("   of it anonymous", process, "RssAnon");
    measureMemoryUnderLoad(process, isSmoke);
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
    return 0;
}
