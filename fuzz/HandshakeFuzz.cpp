#include "FuzzTarget.h"
#include "link/WebSocketConnection.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <cctype>
#include <memory>
#include <string>
#include <vector>

using namespace brenvale;

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;
using State = Connection::State;

/// A client and the desktop's end of its connection.
class Link {
public:
    Link() {
        static asio::io_context listening;
        static tcp::acceptor acceptor(listening, {asio::ip::address_v4::loopback(), 0});
        client_.connect(acceptor.local_endpoint());
        tcp::socket accepted(context_);
        acceptor.accept(accepted);
        // Thousands of connections a second would use up all ports, were each kept for late segments.
        client_.set_option(asio::socket_base::linger(true, 0));
        connection_ = std::make_shared<WebSocketConnection>(std::move(accepted));
        connection_->stateUpdateHandler = [this](const Connection::StateReport& report) {
            changed(report);
        };
    }

    /// Sends all of `bytes` and nothing more, and goes on to the end of the connection.
    void run(std::string_view bytes) {
        asio::write(client_, asio::buffer(bytes.data(), bytes.size()));
        client_.shutdown(tcp::socket::shutdown_send);
        connection_->start();
        asio::async_read(client_, asio::dynamic_buffer(answer_), asio::transfer_all(),
                         [](const error_code&, std::size_t) {});
        context_.run();
    }

    [[nodiscard]] const std::vector<State>& states() const { return states_; }
    [[nodiscard]] std::string_view answer() const { return answer_; }

private:
    void changed(const Connection::StateReport& report) {
        require(report.state != State::failed || !report.error.isEmpty(), "a failure has a reason");
        states_.push_back(report.state);
        if (report.state == State::ready) {
            receive();
        }
    }

    void receive() {
        connection_->receiveMessage([this](Connection::Delivery delivery) {
            if (delivery.error.isEmpty()) {
                require(delivery.data.has_value() && delivery.isComplete, "a message comes whole");
                receive();
            }
        });
    }

    asio::io_context context_{1};
    tcp::socket client_{context_};
    std::shared_ptr<WebSocketConnection> connection_;
    std::vector<State> states_;
    std::string answer_;
};

std::string inLowerCase(std::string_view text) {
    std::string lower(text);
    for (auto& character : lower) {
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return lower;
}

/// Whether the head has a field of that name, whatever its case.
bool hasField(std::string_view head, std::string_view name) {
    return inLowerCase(head).find("\r\n" + std::string(name) + ":") != std::string::npos;
}

/// The value of a field of the request's head; empty unless it stands there plainly, once and in one line.
std::string_view plainValue(std::string_view request, std::string_view name) {
    const auto head = request.substr(0, request.find("\r\n\r\n") + 2);
    const auto lower = inLowerCase(head);
    const auto start = "\r\n" + std::string(name) + ": ";
    const auto found = lower.find(start);
    if (found == std::string::npos || lower.find(name, found + start.size()) != std::string::npos) {
        return {};
    }
    const auto from = found + start.size();
    const auto end = head.find("\r\n", from);
    if (end == std::string_view::npos || request.find_first_of(" \t", end) == end + 2) {
        return {};
    }
    return head.substr(from, end - from);
}

/// Whether a web page asks that has no name, or reaches us by a name that is not this computer's.
bool isFromForeignPage(std::string_view request) {
    const auto origin = plainValue(request, "origin");
    const auto host = plainValue(request, "host");
    const bool isForeignName =
        host.ends_with(".example") && host.find_first_of("[:") == std::string_view::npos;
    return origin == "null" || (origin.starts_with("http://") && isForeignName);
}

void checkAnswer(std::string_view answer, bool isServed) {
    if (answer.empty()) {
        require(!isServed, "who is served is answered");
        return;
    }
    require(answer.starts_with("HTTP/1."), "an answer is HTTP, of the client's version where it is refused");
    require(answer.starts_with("HTTP/1.1 101 ") == isServed, "who is served is told so, and nobody else");
    const auto end = answer.find("\r\n\r\n");
    require(end != std::string_view::npos, "an answer is whole");
    const std::string head(answer.substr(0, end));
    require(!hasField(head, "server"), "nothing names the stack");
    require(!isServed || !hasField(head, "sec-websocket-extensions"), "no extension is agreed on");
    require(!isServed || !hasField(head, "sec-websocket-protocol"), "no subprotocol is agreed on");
}

} // namespace

/// The input is all that one client sends, before it waits for the end.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t fitsTheSocket = std::size_t{1} << 16;
    const auto input = inputText(data, size).substr(0, fitsTheSocket);
    Link link;
    link.run(input);
    const auto& states = link.states();
    const bool isServed = states.size() == 3 && states[1] == State::ready;
    require(states.size() == (isServed ? 3 : 2), "a connection is opened at most once and ends once");
    require(states.front() == State::preparing && states.back() == State::failed, "it begins and ends");
    require(!isServed || !isFromForeignPage(input), "a foreign page is refused");
    checkAnswer(link.answer(), isServed);
    return 0;
}
