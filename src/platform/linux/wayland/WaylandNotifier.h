#pragma once

#include "platform/linux/wayland/WaylandConnection.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace brenvale {

/// Serves a Wayland connection from the Qt event loop of the thread that makes it, main or another, without
/// ever waiting. After making requests call `flush`.
class WaylandNotifier final : public QObject {
public:
    explicit WaylandNotifier(std::unique_ptr<WaylandConnection> connection);

    /// The compositor has named all its services. Once.
    std::function<void()> ready;

    /// The connection has ended, or the compositor has not named its services within some seconds. Once,
    /// from the event loop; this object may be destroyed later, not from within.
    std::function<void()> ended;

    [[nodiscard]] WaylandConnection& connection() { return *connection_; }

    /// Sends what was requested, now or as soon as the compositor takes it.
    void flush();

private:
    void process();
    void afterFlush(bool isAlive);

    std::unique_ptr<WaylandConnection> connection_;
    QSocketNotifier reading_;
    QSocketNotifier writing_;
    QTimer patience_;
    bool isReady_ = false;
    bool hasEnded_ = false;
};

} // namespace brenvale
