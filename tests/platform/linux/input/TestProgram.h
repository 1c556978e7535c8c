#pragma once

#include <QStringList>
#include <QTemporaryFile>

#include <array>

#include <sys/types.h>

namespace brenvale {

/// A program with a file at each end. Not QProcess: its child borrows our memory for a moment, and the thread
/// sanitizer takes what that does for our own from then on.
class TestProgram {
public:
    TestProgram(const QString& program, const QStringList& arguments, const QByteArray& input = {});
    TestProgram(const TestProgram&) = delete;
    TestProgram& operator=(const TestProgram&) = delete;
    ~TestProgram() { end(); }

    void signal(int number) const;
    /// Kills it.
    void end();
    /// What it wrote until it ended by itself.
    [[nodiscard]] QString output();

private:
    void wait();

    QTemporaryFile input_;
    QTemporaryFile output_;
    pid_t process_ = 0; ///< 0 where there is none any more
};

/// Where a program that was started says that it is ready, as some do by a number of a descriptor.
class Announcement {
public:
    Announcement();
    ~Announcement();
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;

    /// What the program, which inherits it, is to write to.
    [[nodiscard]] int descriptor() const { return ends_[1]; }

    /// The first line that the program writes, once it has been started. Empty if it ends or takes too long.
    [[nodiscard]] QByteArray wait();

private:
    std::array<int, 2> ends_{-1, -1};
};

} // namespace brenvale
