#include "platform/linux/ChildPrograms.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using brenvale::ChildPrograms;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;

namespace {

/// Children write what they see to a FIFO, so that a read waits for them.
struct ChildProgramsTest : testing::Test {
    ChildProgramsTest() {
        EXPECT_EQ(::mkfifo(QFile::encodeName(told).constData(), 0600), 0);
        EXPECT_EQ(::pipe(leaked.data()), 0); // without close-on-exec, as a library might leave it
    }
    ~ChildProgramsTest() override {
        ::close(leaked[0]);
        ::close(leaked[1]);
    }
    ChildProgramsTest(const ChildProgramsTest&) = delete;
    ChildProgramsTest& operator=(const ChildProgramsTest&) = delete;

    /// The lines that `script` writes to its standard output.
    [[nodiscard]] QList<QByteArray> linesOf(const QString& script,
                                            const ChildPrograms& programs = ChildPrograms()) {
        EXPECT_EQ(programs.start(QStringLiteral("sh"),
                                 {QStringLiteral("-c"), QStringLiteral("{ %1; } >%2").arg(script, told)}),
                  std::nullopt);
        QFile fifo(told);
        EXPECT_TRUE(fifo.open(QIODevice::ReadOnly));
        auto lines = fifo.readAll().split('\n');
        lines.removeLast();
        return lines;
    }

    QTemporaryDir folder;
    QString told = folder.filePath(QStringLiteral("told"));
    std::array<int, 2> leaked{};
};

} // namespace

TEST_F(ChildProgramsTest, AChildHasNoneOfOurDescriptors) {
    const auto descriptors =
        linesOf(QStringLiteral("for entry in /proc/$$/fd/*; do readlink \"$entry\"; done"));
    EXPECT_GE(descriptors.size(), 3);
    EXPECT_THAT(descriptors, Each(AnyOf("/dev/null", told.toUtf8()))) << "and the FIFO of its output";
}

TEST_F(ChildProgramsTest, AChildIsInASessionOfItsOwnAtHomeWithoutBlockedSignals) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &set, nullptr), 0);
    std::signal(SIGPIPE, SIG_IGN);
    const auto lines =
        // The shell blocks signals itself while it starts a program: it reads its own state without one.
        linesOf(
            QStringLiteral("pwd; cut -d' ' -f6 /proc/$$/stat; while read -r line; do "
                           "case $line in SigBlk*|SigIgn*) echo \"$line\";; esac; done </proc/$$/status"));
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(QDir(QString::fromLocal8Bit(lines[0])).canonicalPath(), QDir::home().canonicalPath());
    EXPECT_NE(lines[1].toInt(), ::getsid(0));
    EXPECT_EQ(lines[2], "SigBlk:\t0000000000000000");
    EXPECT_EQ(lines[3].right(4).toInt(nullptr, 16) & (1 << (SIGPIPE - 1)), 0);
}

TEST_F(ChildProgramsTest, AChildHasTheEnvironmentOfTheUser) {
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("KEPT"), QStringLiteral("as it was"));
    environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("of our own start"));
    const auto lines = linesOf(QStringLiteral("echo $KEPT; echo $XDG_ACTIVATION_TOKEN; echo $HOME"),
                               ChildPrograms(environment));
    EXPECT_THAT(lines, ElementsAre("as it was", "", ""));
}

TEST_F(ChildProgramsTest, AProgramThatIsNotThereIsAnError) {
    const auto error = ChildPrograms().start(QStringLiteral("no-such-program"), {});
    EXPECT_EQ(error, QStringLiteral("no-such-program can't be started: No such file or directory"));
}

TEST_F(ChildProgramsTest, OneThatCannotRunIsAnError) {
    const auto path = folder.filePath(QStringLiteral("broken"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\x7f"
               "ELF, but not really");
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    file.close();
    EXPECT_EQ(ChildPrograms().start(path, {}), path + QStringLiteral(" can't be started: Exec format error"));
}

TEST_F(ChildProgramsTest, AProcessThatAnswersHasOnlyItsAnswersPipe) {
    QProcess process;
    ChildPrograms().prepare(process);
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("ls /proc/$$/fd")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.readAll(), "0\n1\n2\n");
}
