#pragma once

#include <QCoreApplication>

#include <array>

namespace brenvale {

/// The application object that Qt's objects need on the main thread, with its event loop. One at a time.
struct EventLoop {
    /// Lets what is due happen, and waits for more, until `condition` holds.
    template <typename Condition>
    static void turnUntil(Condition condition) {
        while (!condition()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

private:
    int count_ = 0;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QCoreApplication application_{count_, arguments_.data()};
};

} // namespace brenvale
