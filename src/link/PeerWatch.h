#pragma once

#include <boost/asio/ip/tcp.hpp>

#include <chrono>

namespace brenvale {

// Whether the far end of a connection is there still, found out by TCP's own means: no frame of ours is sent,
// and whether messages are being read makes no difference. On the link's queue.

/// From now on the system gives a silent peer up within about two minutes.
void watchForDeadPeer(boost::asio::ip::tcp::socket& socket);

/// From now on the peer is asked once a second, and not given up for its silence, until `watchForDeadPeer`.
void askPeerOften(boost::asio::ip::tcp::socket& socket);

/// Whether anything has come from the peer within `time`, be it an acknowledgement alone; true where the
/// system does not tell.
[[nodiscard]] bool hasHeardFromPeer(boost::asio::ip::tcp::socket& socket, std::chrono::milliseconds time);

} // namespace brenvale
