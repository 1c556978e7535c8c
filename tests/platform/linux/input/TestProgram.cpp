#include "TestProgram.h"

#include <QFile>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace brenvale {

TestProgram::TestProgram(const QString& program, const QStringList& arguments, const QByteArray& input) {
    EXPECT_TRUE(input_.open() && output_.open());
    input_.write(input);
    input_.close();
    std::vector<std::string> words{program.toStdString()};
    std::ranges::transform(arguments, std::back_inserter(words), &QString::toStdString);
    std::vector<char*> pointers;
    std::ranges::transform(words, std::back_inserter(pointers),
                           [](std::string& word) { return word.data(); });
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    const auto name = QFile::encodeName(input_.fileName());
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, name.constData(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output_.handle(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    EXPECT_EQ(posix_spawnp(&process_, words.front().c_str(), &files, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&files);
}

void TestProgram::signal(int number) const {
    if (process_ > 0) {
        ::kill(process_, number);
    }
}

void TestProgram::end() {
    signal(SIGKILL);
    wait();
}

QString TestProgram::output() {
    wait();
    output_.seek(0);
    return QString::fromUtf8(output_.readAll());
}

void TestProgram::wait() {
    if (process_ > 0) {
        ::waitpid(std::exchange(process_, 0), nullptr, 0);
    }
}

Announcement::Announcement() {
    EXPECT_EQ(::pipe(ends_.data()), 0);
    ::fcntl(ends_[0], F_SETFD, FD_CLOEXEC);
}

Announcement::~Announcement() {
    for (const int end : ends_) {
        if (end >= 0) {
            ::close(end);
        }
    }
}

QByteArray Announcement::wait() {
    ::close(std::exchange(ends_[1], -1)); // so that the program's end is one here too
    pollfd more{.fd = ends_[0], .events = POLLIN, .revents = 0};
    constexpr int patience = 20'000;
    QByteArray line;
    // To the end of the line: a program that can't write that fails.
    for (char byte = 0; byte != '\n' && ::poll(&more, 1, patience) == 1 && ::read(ends_[0], &byte, 1) == 1;) {
        line += byte;
    }
    return line.trimmed();
}

} // namespace brenvale
