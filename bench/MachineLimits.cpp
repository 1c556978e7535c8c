#include "MachineLimits.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace brenvale::bench {

using boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;

namespace {

/// Two ends of one TCP connection.
struct SocketPair {
    SocketPair() {
        tcp::acceptor acceptor(context, {boost::asio::ip::address_v4::loopback(), 0});
        near.connect(acceptor.local_endpoint());
        acceptor.accept(far);
        near.set_option(tcp::no_delay(true));
        far.set_option(tcp::no_delay(true));
    }

    boost::asio::io_context context;
    tcp::socket near{context};
    tcp::socket far{context};
};

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

double loopbackBytesPerSecond() {
    SocketPair sockets;
    const std::jthread writer([&sockets] {
        const std::vector<char> block(1 << 20, 'x');
        boost::system::error_code error;
        for (const auto start = Clock::now(); secondsSince(start) < 1 && !error;) {
            boost::asio::write(sockets.near, boost::asio::buffer(block), error);
        }
        sockets.near.close(error);
    });
    std::vector<char> block(1 << 20);
    std::size_t total = 0;
    boost::system::error_code error;
    const auto start = Clock::now();
    while (!error) {
        total += sockets.far.read_some(boost::asio::buffer(block), error);
    }
    return static_cast<double>(total) / secondsSince(start);
}

double memoryCopyBytesPerSecond() {
    const std::vector<char> from(1'400'000, 'x');
    std::vector<char> to(from.size());
    std::size_t total = 0;
    const auto start = Clock::now();
    while (secondsSince(start) < 1) {
        std::memcpy(to.data(), from.data(), from.size());
        asm volatile("" : : "r"(to.data()) : "memory"); // the copy must happen
        total += from.size();
    }
    return static_cast<double>(total) / secondsSince(start);
}

double loopbackRoundTripMicroseconds() {
    SocketPair sockets;
    const std::jthread echo([&sockets] {
        std::array<char, 100> block{};
        boost::system::error_code error;
        while (!error) {
            boost::asio::read(sockets.far, boost::asio::buffer(block), error);
            if (!error) {
                boost::asio::write(sockets.far, boost::asio::buffer(block), error);
            }
        }
    });
    std::vector<double> times;
    std::array<char, 100> block{};
    for (const auto begin = Clock::now(); secondsSince(begin) < 1;) {
        const auto start = Clock::now();
        boost::asio::write(sockets.near, boost::asio::buffer(block));
        boost::asio::read(sockets.near, boost::asio::buffer(block));
        times.push_back(1e6 * secondsSince(start));
    }
    boost::system::error_code ignored;
    sockets.near.close(ignored);
    std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
    return times[times.size() / 2];
}

} // namespace brenvale::bench
