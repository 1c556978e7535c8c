#pragma once

#include <QPoint>

#include <cstdint>
#include <memory>
#include <span>

struct input_event;

namespace brenvale {

/// The calls of the kernel that make an input device. One thread.
class KernelInput {
public:
    virtual ~KernelInput() = default;

    /// Opens the kernel's own file for it; false where there is none, or the user may not, or it is not what
    /// its name says. Never waits.
    virtual bool open() = 0;
    virtual bool control(unsigned long request, std::uintptr_t argument) = 0;
    virtual bool write(std::span<const input_event> events) = 0;
    /// Whether the last `write` failed for the moment alone.
    [[nodiscard]] virtual bool isBusy() const { return false; }
    virtual void close() = 0;
};

/// The kernel's calls for real, by /dev/uinput.
[[nodiscard]] std::unique_ptr<KernelInput> kernelInput();

/// A keyboard and pointer of our own in the kernel: every program takes it for hardware. One thread.
class UinputDevice {
public:
    explicit UinputDevice(KernelInput& kernel) : kernel_(kernel) {}
    ~UinputDevice();
    UinputDevice(const UinputDevice&) = delete;
    UinputDevice& operator=(const UinputDevice&) = delete;

    /// Makes the device. False where the kernel makes none. The desktop takes a moment to find it.
    bool create();

    /// One after the other, each told at once. False where the kernel has lost the device; one that is busy
    /// is waited for, for a moment.
    bool key(std::uint16_t code, bool isDown);
    bool move(QPoint by);

private:
    bool declare();
    bool report(std::uint16_t type, std::uint16_t code, std::int32_t value);
    bool write(std::span<const input_event> events);

    KernelInput& kernel_;
    bool isOpen_ = false;
    bool isCreated_ = false;
};

} // namespace brenvale
