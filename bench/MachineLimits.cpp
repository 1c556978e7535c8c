#include "MachineLimits.h"

#include "Measuring.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <array>
#include <cstring>
#include <thread>
#include <vector>

namespace brenvale::bench {

using boost::asio::ip::tcp;

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

} // namespace

LoopbackLimit loopbackLimit() {
    SocketPair sockets;
    double sendingSeconds = 0;
    std::jthread writer([&sockets, &sendingSeconds] {
        const std::vector<char> block(1 << 20, 'x');
        boost::system::error_code error;
        for (const auto start = Clock::now(); secondsSince(start) < 1 && !error;) {
            boost::asio::write(sockets.near, boost::asio::buffer(block), error);
        }
        sendingSeconds = threadCpuSeconds();
        sockets.near.close(error);
    });
    std::vector<char> block(1 << 20);
    double total = 0;
    boost::system::error_code error;
    const auto start = Clock::now();
    const double before = threadCpuSeconds();
    while (!error) {
        total += static_cast<double>(sockets.far.read_some(boost::asio::buffer(block), error));
    }
    const double receivingSeconds = threadCpuSeconds() - before;
    writer.join();
    return {.bytesPerSecond = total / secondsSince(start),
            .receivingSeconds = receivingSeconds / total,
            .sendingSeconds = sendingSeconds / total};
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
    return distributionOf(std::move(times)).median;
}

} // namespace brenvale::bench
