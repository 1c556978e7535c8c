#pragma once

#include <QByteArray>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace brenvale {

/// A TCP client that sends the bytes it is told to, and waits for what comes. Nothing of it is inherited by
/// programs that the test starts.
class RawClient {
public:
    /// Connects on loopback, from the address `from`.
    explicit RawClient(quint16 port, const char* from = "127.0.0.1") {
        const timeval patience{.tv_sec = 60, .tv_usec = 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        const auto source = address(from, 0);
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&source), sizeof source), 0);
        const auto target = address("127.0.0.1", port);
        isConnected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0;
    }
    ~RawClient() { ::close(socket_); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    [[nodiscard]] bool isConnected() const { return isConnected_; }

    void send(const QByteArray& bytes) const {
        ::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    }

    /// All that comes up to and with `end`, or to the end of the stream.
    [[nodiscard]] QByteArray receiveUntil(const QByteArray& end) const {
        QByteArray bytes;
        char byte = 0;
        while (!bytes.endsWith(end) && ::recv(socket_, &byte, 1, 0) == 1) {
            bytes += byte;
        }
        return bytes;
    }

    /// The head of the answer to a handshake.
    [[nodiscard]] QByteArray answerTo(const QByteArray& request) const {
        send(request);
        return receiveUntil("\r\n\r\n");
    }

    /// Whether the other side ends the stream before it sends anything more.
    [[nodiscard]] bool isEnded() const {
        char byte = 0;
        return ::recv(socket_, &byte, 1, 0) <= 0 && errno != EAGAIN;
    }

private:
    static sockaddr_in address(const char* host, quint16 port) {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = htons(port), .sin_addr = {}, .sin_zero = {}};
        ::inet_pton(AF_INET, host, &address.sin_addr);
        return address;
    }

    int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bool isConnected_ = false;
};

/// A WebSocket handshake as a phone sends it, with `fields` ("Name: value" lines, each with its end) besides.
inline QByteArray handshake(const QByteArray& fields = {}, const QByteArray& host = "192.168.1.2:8765") {
    return "GET / HTTP/1.1\r\nHost: " + host +
           "\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
           "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n" +
           fields + "\r\n";
}

} // namespace brenvale
