#include "platform/linux/wayland/WaylandConnection.h"

#include "TestCompositor.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

using Seat = std::unique_ptr<wl_seat, WaylandDestroy<wl_seat_destroy>>;

/// Lets both sides come to their rest.
void exchange(TestCompositor& compositor, WaylandConnection& connection) {
    for (int round = 0; round < 5; ++round) {
        compositor.step();
        connection.process();
    }
}

/// Takes connections, and never reads or writes anything.
class HungCompositor {
public:
    HungCompositor() {
        const auto path = folder_.path().toStdString() + "/wayland-0";
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(descriptor_, 0), 0);
        qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
        qputenv("WAYLAND_DISPLAY", "wayland-0");
    }

    ~HungCompositor() {
        ::close(descriptor_);
        qunsetenv("WAYLAND_DISPLAY");
    }

    HungCompositor(const HungCompositor&) = delete;
    HungCompositor& operator=(const HungCompositor&) = delete;

private:
    QTemporaryDir folder_;
    int descriptor_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

} // namespace

TEST(WaylandConnection, ThereIsNoneWithoutACompositor) {
    qputenv("WAYLAND_DISPLAY", "wayland-4711");
    EXPECT_EQ(WaylandConnection::open(), nullptr);
    qputenv("WAYLAND_DISPLAY", QByteArray("/") + QByteArray(200, 'x'));
    EXPECT_EQ(WaylandConnection::open(), nullptr);
    qunsetenv("WAYLAND_DISPLAY");
    EXPECT_EQ(WaylandConnection::open(), nullptr);
}

TEST(WaylandConnection, TheServicesAreKnownWhenItIsReady) {
    TestCompositor compositor;
    compositor.offer(wl_seat_interface, 5);
    const auto connection = WaylandConnection::open();
    ASSERT_TRUE(connection);
    EXPECT_FALSE(connection->isReady());
    exchange(compositor, *connection);
    EXPECT_TRUE(connection->isReady());
    ASSERT_EQ(connection->globals().size(), 1);
    EXPECT_EQ(connection->find(wl_seat_interface)->version, 5);
    EXPECT_EQ(connection->find(wl_output_interface), nullptr);
}

TEST(WaylandConnection, AServiceIsBoundInTheVersionThatBothKnow) {
    TestCompositor compositor;
    compositor.offer(wl_seat_interface, 3);
    const auto connection = WaylandConnection::open();
    exchange(compositor, *connection);
    const Seat older(static_cast<wl_seat*>(connection->bind(wl_seat_interface, 2)));
    exchange(compositor, *connection);
    EXPECT_EQ(compositor.boundVersion, 2);
    const Seat newer(static_cast<wl_seat*>(connection->bind(wl_seat_interface, 7)));
    exchange(compositor, *connection);
    EXPECT_EQ(compositor.boundVersion, 3);
    EXPECT_EQ(compositor.bindings, 2);
    EXPECT_EQ(connection->bind(wl_output_interface, 1), nullptr);
}

TEST(WaylandConnection, ServicesThatComeAndGoAreTold) {
    TestCompositor compositor;
    const auto connection = WaylandConnection::open();
    std::vector<std::string> changes;
    connection->added = [&changes](const auto& global) {
        changes.push_back("+" + global.interface);
    };
    connection->removed = [&changes](const auto& global) {
        changes.push_back("-" + global.interface);
    };
    exchange(compositor, *connection);
    auto* seat = compositor.offer(wl_seat_interface, 1);
    exchange(compositor, *connection);
    EXPECT_NE(connection->find(wl_seat_interface), nullptr);
    wl_global_destroy(seat);
    exchange(compositor, *connection);
    EXPECT_EQ(connection->find(wl_seat_interface), nullptr);
    EXPECT_THAT(changes, ElementsAre("+wl_seat", "-wl_seat"));
}

TEST(WaylandConnection, ASyncIsAnsweredOnce) {
    TestCompositor compositor;
    const auto connection = WaylandConnection::open();
    exchange(compositor, *connection);
    int answers = 0;
    connection->sync([&answers] { ++answers; });
    connection->process();
    EXPECT_EQ(answers, 0);
    exchange(compositor, *connection);
    EXPECT_EQ(answers, 1);
    exchange(compositor, *connection);
    EXPECT_EQ(answers, 1);
}

TEST(WaylandConnection, ACompositorThatGoesAwayEndsIt) {
    TestCompositor compositor;
    compositor.offer(wl_seat_interface, 1);
    const auto connection = WaylandConnection::open();
    exchange(compositor, *connection);
    const Seat seat(static_cast<wl_seat*>(connection->bind(wl_seat_interface, 1)));
    bool isAnswered = false;
    connection->sync([&isAnswered] { isAnswered = true; });
    compositor.dropClients();
    while (connection->process()) {
    }
    EXPECT_FALSE(connection->isAlive());
    EXPECT_FALSE(connection->flush());
    EXPECT_FALSE(connection->process());
    EXPECT_FALSE(isAnswered);
}

TEST(WaylandConnection, ARefusedRequestEndsIt) {
    TestCompositor compositor;
    const auto connection = WaylandConnection::open();
    exchange(compositor, *connection);
    compositor.refuseClients();
    exchange(compositor, *connection);
    EXPECT_FALSE(connection->process());
    EXPECT_FALSE(connection->isAlive());
}

TEST(WaylandConnection, ACompositorThatHangsHoldsUpNobody) {
    const HungCompositor compositor;
    const auto connection = WaylandConnection::open();
    ASSERT_TRUE(connection);
    for (int request = 0; request < 100'000 && connection->isAlive(); ++request) {
        connection->sync([] {});
        connection->process();
        if (connection->hasUnsent()) {
            break;
        }
    }
    EXPECT_TRUE(connection->hasUnsent());
    EXPECT_FALSE(connection->isReady());
    std::array<std::unique_ptr<WaylandConnection>, 10> others; // more than its queue of connections holds
    for (auto& other : others) {
        other = WaylandConnection::open();
    }
    EXPECT_EQ(others.back(), nullptr);
}

TEST(WaylandConnection, AWaitEndsByItsOwnWakeUp) {
    TestCompositor compositor;
    const auto connection = WaylandConnection::open();
    exchange(compositor, *connection);
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    EXPECT_TRUE(connection->wait(std::chrono::hours(1), ends[0]));
    ::close(ends[0]);
    ::close(ends[1]);
}
