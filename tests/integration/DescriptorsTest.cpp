#include "integration/LiveServer.h"
#include "integration/RawClient.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <spawn.h>
#include <sys/wait.h>

using namespace brenvale;

namespace {

/// What a process has open, as the system names it.
QStringList openOf(const QString& process) {
    QStringList targets;
    const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process));
    for (const auto& entry : descriptors.entryList(QDir::System | QDir::AllEntries | QDir::NoDotAndDotDot)) {
        char target[4096];
        const auto path = descriptors.filePath(entry).toUtf8();
        const auto length = ::readlink(path.constData(), target, sizeof target);
        if (length > 0) {
            targets.append(QString::fromUtf8(target, length));
        }
    }
    return targets;
}

/// A program that runs for as long as this lives.
class Child {
public:
    Child() {
        char name[] = "sleep";
        char time[] = "600";
        char* arguments[] = {name, time, nullptr};
        EXPECT_EQ(::posix_spawnp(&process_, name, nullptr, nullptr, arguments, environ), 0);
    }
    ~Child() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// What it has open. It is its own program by then: until that, it is a copy of this one.
    [[nodiscard]] QStringList descriptors() const {
        const auto process = QString::number(process_);
        EXPECT_TRUE(waitUntil([&] {
            QFile name(QStringLiteral("/proc/%1/comm").arg(process));
            return name.open(QFile::ReadOnly) && name.readAll().startsWith("sleep");
        }));
        return openOf(process);
    }

private:
    pid_t process_ = -1;
};

/// What this process was started with: a child may have that.
struct Inherited {
    QStringList inherited = openOf(QStringLiteral("self"));
};

struct LiveDescriptors : Inherited, LiveServer {
    LiveDescriptors() { qputenv("XDG_CACHE_HOME", cache.path().toUtf8()); }
    ~LiveDescriptors() override { qunsetenv("XDG_CACHE_HOME"); }

    /// What the child has of this process's own. It may have more: while it starts, it opens the files of its
    /// locale.
    [[nodiscard]] QStringList leakedTo(const Child& child) const {
        const auto own = openOf(QStringLiteral("self"));
        auto targets = child.descriptors();
        targets.removeIf([&](const QString& target) {
            return inherited.contains(target) || !own.contains(target) ||
                   target.startsWith(QStringLiteral("/proc/"));
        });
        return targets;
    }

    [[nodiscard]] static bool hasOpen(const QString& part) {
        return !openOf(QStringLiteral("self")).filter(part).isEmpty();
    }

    QTemporaryDir cache;
    QTemporaryDir folder;
};

} // namespace

using Descriptors = LiveDescriptors;

TEST_F(Descriptors, AStartedProgramHasNoneOfTheLinks) {
    start();
    const RawClient client(server->port());
    EXPECT_TRUE(client.answerTo(handshake()).startsWith("HTTP/1.1 101"));
    server->send("{}");
    ASSERT_TRUE(waitForLog("is ready (handshake complete)"));
    queue.asyncAfter(std::chrono::milliseconds(1), [] {}); // a timer, too
    for (const auto* part : {"socket:", "eventpoll", "eventfd"}) {
        EXPECT_TRUE(hasOpen(QString::fromUtf8(part))) << part << ": or the test shows nothing";
    }
    const Child child;
    EXPECT_EQ(leakedTo(child), QStringList());
}

TEST_F(Descriptors, AStartedProgramHasNoneOfTheFilesOnTheirWay) {
    start();
    Phone sender;
    greet(sender);
    sender.sendText(R"({"action":"file_transfer_start","fileName":"a.bin","fileSize":3})");
    ASSERT_TRUE(waitUntil([] { return hasOpen(QStringLiteral("/a.bin")); }));

    OutgoingSpool spool(0); // nothing waits in memory
    const auto waiting = spool.add("text");
    ASSERT_TRUE(hasOpen(cache.path()));

    const Child child;
    const auto leaked = leakedTo(child);
    EXPECT_TRUE(leaked.filter(QStringLiteral("a.bin")).isEmpty());
    EXPECT_TRUE(leaked.filter(cache.path()).isEmpty());
}

TEST_F(Descriptors, AStartedProgramKeepsNoPort) {
    start();
    const RawClient client(server->port());
    EXPECT_TRUE(client.answerTo(handshake()).startsWith("HTTP/1.1 101"));
    const Child child;
    EXPECT_EQ(leakedTo(child), QStringList()) << "it runs by now";
    const auto oldPort = server->port();
    const auto listens = statuses().count(listening());

    server->start();
    ASSERT_TRUE(waitUntil([&] { return statuses().count(listening()) > listens; }));
    EXPECT_TRUE(RawClient(oldPort).answerTo(handshake()).startsWith("HTTP/1.1 101")) << "served anew";
    EXPECT_TRUE(statuses().filter(QStringLiteral("failed")).isEmpty());

    fake.userDefaults.set(QStringLiteral("port"), freePort());
    server->start();
    ASSERT_TRUE(waitForStatus(listening()));
    EXPECT_FALSE(RawClient(oldPort).isConnected()) << "nobody waits in a queue that nobody reads";
    EXPECT_TRUE(client.receiveUntil("never").size() < 1000) << "and the old connection has ended";
}
