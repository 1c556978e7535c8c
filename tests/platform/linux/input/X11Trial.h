#pragma once

#include "EventPosterContract.h"
#include "SeenInput.h"
#include "TestProgram.h"

#include <memory>
#include <optional>
#include <thread>

struct xcb_connection_t;

namespace brenvale {

/// An X server of its own that draws nowhere, and is stopped and gone on with at will.
class TestXServer {
public:
    TestXServer();
    TestXServer(const TestXServer&) = delete;
    TestXServer& operator=(const TestXServer&) = delete;
    ~TestXServer();

    /// Whether this machine has one and it came up. DISPLAY then names it.
    [[nodiscard]] bool isThere() const { return isThere_; }
    void stop();
    void goOn();
    void kill() { program_->end(); }

    /// Runs a program of X11 to its end and gives what it wrote.
    [[nodiscard]] static QString run(const QString& program, const QStringList& arguments);

private:
    std::optional<TestProgram> program_;
    QByteArray displayBefore_;
    bool isThere_ = false;
};

/// A program that has the keyboard and writes down what comes, by the layout as it is when the key is read.
class X11Witness {
public:
    X11Witness();
    X11Witness(const X11Witness&) = delete;
    X11Witness& operator=(const X11Witness&) = delete;
    ~X11Witness();

    [[nodiscard]] QStringList seenUntil(const QString& end) { return seen_.seenUntil(end); }
    [[nodiscard]] QStringList lines() { return seen_.lines(); }

private:
    class Window;

    void run(const std::stop_token& stop);
    std::unique_ptr<Window> window_;
    SeenInput seen_;
    std::jthread thread_;
};

} // namespace brenvale
