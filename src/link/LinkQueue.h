#pragma once

#include "platform/DispatchQueue.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <thread>

namespace brenvale {

/// The serial queue "ws.server": one thread of that name, on which the sockets' handlers run between the
/// steps. The destructor drops what has not run and waits for the step that runs.
class LinkQueue final : public DispatchQueue {
public:
    LinkQueue();
    ~LinkQueue() override;
    LinkQueue(const LinkQueue&) = delete;
    LinkQueue& operator=(const LinkQueue&) = delete;

    void async(Step step) override;
    void asyncAfter(std::chrono::milliseconds delay, Step step) override;

    /// The context that sockets of this queue belong to.
    [[nodiscard]] boost::asio::io_context& context() { return context_; }

private:
    boost::asio::io_context context_{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_{context_.get_executor()};
    /// Makes the context take its own descriptors now: a lack of them later is then an error of one socket
    /// alone.
    boost::asio::steady_timer wakeUpSource_;
    std::jthread thread_;
};

} // namespace brenvale
