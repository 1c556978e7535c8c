#include "platform/linux/BusProbe.h"

#include <QByteArray>

#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include <dbus/dbus.h>

namespace brenvale {

namespace {

constexpr std::chrono::seconds patience{2};

/// No kind of address: who connects to it is told so at once.
constexpr auto noAddress = "disabled:";

constexpr auto sessionVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr auto systemVariable = "DBUS_SYSTEM_BUS_ADDRESS";

/// Where who asks for the session bus finds it. Empty where it would have to be started first.
QByteArray sessionAddress() {
    const auto address = qgetenv(sessionVariable);
    const auto runtimeFolder = qgetenv("XDG_RUNTIME_DIR");
    return address.isEmpty() && !runtimeFolder.isEmpty() ? "unix:path=" + runtimeFolder + "/bus" : address;
}

QByteArray systemAddress() {
    const auto address = qgetenv(systemVariable);
    return address.isEmpty() ? "unix:path=/var/run/dbus/system_bus_socket" : address;
}

/// Says hello, and returns when the bus has said anything, be it that it is not there. A connection to the
/// bus as such would not do: the library keeps all others from making one until this one has its answer.
void waitForAnswer(const QByteArray& address) {
    auto* connection = ::dbus_connection_open_private(address.constData(), nullptr);
    if (connection == nullptr) {
        return;
    }
    auto* hello =
        ::dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello");
    auto* answer =
        ::dbus_connection_send_with_reply_and_block(connection, hello, DBUS_TIMEOUT_USE_DEFAULT, nullptr);
    ::dbus_message_unref(hello);
    if (answer != nullptr) {
        ::dbus_message_unref(answer);
    }
    ::dbus_connection_close(connection);
    ::dbus_connection_unref(connection);
}

/// Asks on a thread of its own, which stays behind where the bus stands still.
std::future<void> ask(const QByteArray& address) {
    std::promise<void> answered;
    auto answer = answered.get_future();
    std::thread([answered = std::move(answered), address]() mutable {
        waitForAnswer(address);
        answered.set_value();
    }).detach();
    return answer;
}

} // namespace

void leaveOutSilentBuses() {
    ::dbus_threads_init_default();
    const auto session = ask(sessionAddress());
    const auto system = ask(systemAddress());
    const auto deadline = std::chrono::steady_clock::now() + patience;
    const bool isSessionSilent = session.wait_until(deadline) != std::future_status::ready;
    const bool isSystemSilent = system.wait_until(deadline) != std::future_status::ready;
    if (isSessionSilent) {
        qputenv(sessionVariable, noAddress);
    }
    if (isSystemSilent) {
        qputenv(systemVariable, noAddress);
    }
}

} // namespace brenvale
