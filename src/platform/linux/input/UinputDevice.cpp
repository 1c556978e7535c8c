#include "platform/linux/input/UinputDevice.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr auto path = "/dev/uinput";
constexpr unsigned int miscMajor = 10;
constexpr unsigned int uinputMinor = 223;

class RealKernelInput final : public KernelInput {
public:
    RealKernelInput() = default;
    ~RealKernelInput() override { RealKernelInput::close(); }
    RealKernelInput(const RealKernelInput&) = delete;
    RealKernelInput& operator=(const RealKernelInput&) = delete;

    bool open() override {
        file_ = ::open(path, O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        struct stat status = {};
        unsigned int version = 0;
        const bool isUinput = file_ >= 0 && ::fstat(file_, &status) == 0 && S_ISCHR(status.st_mode) &&
                              status.st_rdev == makedev(miscMajor, uinputMinor) &&
                              ::ioctl(file_, UI_GET_VERSION, &version) >= 0;
        if (!isUinput) {
            close();
        }
        return isUinput;
    }

    bool control(unsigned long request, std::uintptr_t argument) override {
        return ::ioctl(file_, request, argument) >= 0;
    }

    bool write(std::span<const input_event> events) override {
        const auto written = ::write(file_, events.data(), events.size_bytes());
        isBusy_ = written < 0 && (errno == EAGAIN || errno == EINTR);
        return written == static_cast<ssize_t>(events.size_bytes());
    }

    [[nodiscard]] bool isBusy() const override { return isBusy_; }

    void close() override {
        if (file_ >= 0) {
            ::close(file_);
            file_ = -1;
        }
    }

private:
    int file_ = -1;
    bool isBusy_ = false;
};

} // namespace

std::unique_ptr<KernelInput> kernelInput() {
    return std::make_unique<RealKernelInput>();
}

UinputDevice::~UinputDevice() {
    if (isCreated_) {
        kernel_.control(UI_DEV_DESTROY, 0);
    }
    if (isOpen_) {
        kernel_.close();
    }
}

bool UinputDevice::create() {
    isOpen_ = kernel_.open();
    isCreated_ = isOpen_ && declare() && kernel_.control(UI_DEV_CREATE, 0);
    return isCreated_;
}

/// What the device can do has to be said before it is made.
bool UinputDevice::declare() {
    constexpr std::array types{EV_KEY, EV_REL};
    constexpr std::array axes{REL_X, REL_Y};
    constexpr std::array buttons{BTN_LEFT, BTN_RIGHT};
    constexpr std::uintptr_t lastKey = 247;
    const auto all = [this](unsigned long request, const auto& bits) {
        return std::ranges::all_of(
            bits, [&](int bit) { return kernel_.control(request, static_cast<std::uintptr_t>(bit)); });
    };
    bool isDeclared = all(UI_SET_EVBIT, types) && all(UI_SET_RELBIT, axes) && all(UI_SET_KEYBIT, buttons);
    for (std::uintptr_t key = 1; isDeclared && key <= lastKey; ++key) {
        isDeclared = kernel_.control(UI_SET_KEYBIT, key);
    }
    uinput_setup setup{.id = {.bustype = BUS_VIRTUAL, .vendor = 0, .product = 0, .version = 1},
                       .name = {},
                       .ff_effects_max = 0};
    constexpr std::string_view name = "Brenvale";
    std::ranges::copy(name, static_cast<char*>(setup.name));
    return isDeclared && kernel_.control(UI_DEV_SETUP, reinterpret_cast<std::uintptr_t>(&setup));
}

bool UinputDevice::key(std::uint16_t code, bool isDown) {
    return report(EV_KEY, code, isDown ? 1 : 0);
}

bool UinputDevice::move(QPoint by) {
    std::array<input_event, 3> events{};
    std::size_t count = 0;
    const auto add = [&](std::uint16_t type, std::uint16_t code, std::int32_t value) {
        auto& event = events.at(count++);
        event.type = type;
        event.code = code;
        event.value = value;
    };
    if (by.x() != 0) {
        add(EV_REL, REL_X, by.x());
    }
    if (by.y() != 0) {
        add(EV_REL, REL_Y, by.y());
    }
    if (count == 0) {
        return true;
    }
    add(EV_SYN, SYN_REPORT, 0);
    return write(std::span(events).first(count));
}

bool UinputDevice::report(std::uint16_t type, std::uint16_t code, std::int32_t value) {
    std::array<input_event, 2> events{};
    events[0].type = type;
    events[0].code = code;
    events[0].value = value;
    events[1].type = EV_SYN;
    events[1].code = SYN_REPORT;
    return write(events);
}

bool UinputDevice::write(std::span<const input_event> events) {
    constexpr int tries = 100;
    constexpr std::chrono::milliseconds betweenTries{2};
    for (int i = 0; i < tries; ++i) {
        if (kernel_.write(events)) {
            return true;
        }
        if (!kernel_.isBusy()) {
            return false;
        }
        std::this_thread::sleep_for(betweenTries);
    }
    return true; // the event is lost, the device is not
}

} // namespace brenvale
