#include "platform/linux/StandardOutputLog.h"
#include "platform/Fatal.h"
#include "platform/LastSteps.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

using brenvale::StandardOutputLog;

namespace {

/// Takes what goes to standard output while it lives, through a pipe.
class OutputCapture {
public:
    OutputCapture() : saved_(::dup(STDOUT_FILENO)) {
        EXPECT_EQ(::pipe(ends_), 0);
        ::dup2(ends_[1], STDOUT_FILENO);
        ::close(ends_[1]);
    }
    ~OutputCapture() {
        restore();
        ::close(ends_[0]);
    }
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    void restore() {
        if (saved_ >= 0) {
            ::dup2(saved_, STDOUT_FILENO);
            ::close(saved_);
            saved_ = -1;
        }
    }

    /// What is there already.
    [[nodiscard]] std::string readNow() const {
        ::fcntl(ends_[0], F_SETFL, O_NONBLOCK);
        return readAll();
    }

    [[nodiscard]] std::string readAll() const {
        std::string text;
        char block[4096];
        for (ssize_t size = 0; (size = ::read(ends_[0], block, sizeof block)) > 0;) {
            text.append(block, static_cast<std::size_t>(size));
        }
        return text;
    }

private:
    int ends_[2] = {-1, -1};
    int saved_;
};

} // namespace

TEST(StandardOutputLog, ALineLeavesAtOnce) {
    const OutputCapture capture;
    StandardOutputLog log;
    log.line("[WebSocketServer] – ä");
    EXPECT_EQ(capture.readNow(), "[WebSocketServer] – ä\n");
}

TEST(StandardOutputLog, LinesOfSeveralThreadsStayWhole) {
    OutputCapture capture;
    std::string text;
    {
        const std::jthread reader([&] { text = capture.readAll(); });
        {
            StandardOutputLog log;
            const auto write = [&log](char character) {
                for (int i = 0; i < 500; ++i) {
                    log.line(QByteArray(300, character));
                }
            };
            const std::jthread first(write, 'a');
            const std::jthread second(write, 'b');
        }
        capture.restore();
    }
    std::istringstream lines(text);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        ASSERT_EQ(line, std::string(300, line.front()));
    }
    EXPECT_EQ(count, 1000);
}

TEST(StandardOutputLogDeathTest, AFatalTextComesBehindTheLinesBeforeIt) {
    EXPECT_DEATH(
        {
            ::dup2(STDERR_FILENO, STDOUT_FILENO);
            StandardOutputLog log;
            brenvale::setLastSteps([&log] { log.flush(); });
            for (int i = 0; i < 1000; ++i) {
                log.line("a line");
            }
            brenvale::fatal("it must not be");
        },
        "^(a line\n){1000}it must not be\n$");
}
