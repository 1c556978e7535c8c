#include "SenderMemory.h"

#include "LinkLoad.h"
#include "Phone.h"
#include "ProcessMemory.h"

#include <QProcess>
#include <QTemporaryFile>

#include <future>
#include <thread>

namespace brenvale::bench {

using namespace std::chrono_literals;

namespace {

constexpr quint16 port = 18767;

/// The child may not listen yet.
void connectTo(Phone& phone) {
    for (const auto start = Clock::now(); !phone.connect(QStringLiteral("127.0.0.1"), port);) {
        if (secondsSince(start) > 10) {
            qFatal("the sender does not listen");
        }
        std::this_thread::sleep_for(10ms);
    }
}

} // namespace

SenderMemory measureSenderMemory(const QString& program, int mebibytes, const QString& folder) {
    QTemporaryFile file(folder + QStringLiteral("/brenvale-bench-XXXXXX"));
    if (!file.open() || !file.resize(qint64{mebibytes} << 20)) {
        qFatal("no file can be made in %s", qUtf8Printable(folder));
    }
    QProcess sender;
    sender.start(program, {QString::fromLatin1(senderArgument), file.fileName()});
    if (!sender.waitForStarted()) {
        qFatal("%s does not start", qUtf8Printable(program));
    }
    const auto process = static_cast<pid_t>(sender.processId());
    SenderMemory memory{};
    std::promise<void> hasLast;
    Phone phone;
    phone.onMessage([&](const QByteArray& message) {
        if (isLastChunk(message)) {
            hasLast.set_value();
        }
    });
    connectTo(phone);
    memory.idle = mebibytesOf(process, "VmRSS");
    phone.sendText(R"({"action":"connected","deviceName":"Pixel"})"); // asks for the file
    hasLast.get_future().wait();
    phone.close(); // answered behind all that the sender still does for the file
    memory.peak = mebibytesOf(process, "VmHWM");
    memory.after = mebibytesOf(process, "VmRSS");
    sender.kill();
    sender.waitForFinished();
    return memory;
}

void sendOneFile(const QString& path) {
    LinkLoad load(port);
    load.sendFileToNamedPhone(path);
}

} // namespace brenvale::bench
