#include "link/LinkQueue.h"

#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>

#include <pthread.h>

namespace brenvale {

LinkQueue::LinkQueue()
    : wakeUpSource_(context_), thread_([this] {
          pthread_setname_np(pthread_self(), "ws.server");
          context_.run();
      }) {}

LinkQueue::~LinkQueue() {
    context_.stop();
}

void LinkQueue::async(Step step) {
    boost::asio::post(context_, std::move(step));
}

void LinkQueue::asyncAfter(std::chrono::milliseconds delay, Step step) {
    auto timer = std::make_shared<boost::asio::steady_timer>(context_, delay);
    timer->async_wait([timer, step = std::move(step)](const boost::system::error_code& error) mutable {
        if (!error) {
            step();
        }
    });
}

} // namespace brenvale
