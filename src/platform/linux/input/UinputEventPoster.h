#pragma once

#include "platform/linux/input/PointerSteps.h"
#include "platform/linux/input/TrackedPointer.h"
#include "platform/linux/input/UinputDevice.h"

#include <memory>
#include <string_view>
#include <thread>

namespace brenvale {

class InputConsent;

/// Posts by a device of our own in the kernel, from a thread of its own. The device is made for the first
/// event. A text has the characters of a US keyboard, as the kernel knows keys and no layout: others are left
/// out. On a desktop where the user may be asked it works only once nobody can be. Any thread.
class UinputEventPoster final : public EventPoster {
public:
    /// `consent` is null where the desktop has none; else it lives for longer.
    explicit UinputEventPoster(std::unique_ptr<KernelInput> kernel, const InputConsent* consent = nullptr);
    ~UinputEventPoster() override;
    UinputEventPoster(const UinputEventPoster&) = delete;
    UinputEventPoster& operator=(const UinputEventPoster&) = delete;

    [[nodiscard]] bool canMakeEvents() const override;
    [[nodiscard]] QPointF pointerLocation() const override { return pointer_.location(); }
    void post(const KeyEvent& event) override;
    void post(const SystemDefinedEvent& event) override;
    void post(const MouseEvent& event) override;

private:
    void run();
    [[nodiscard]] bool waitForEvents(int milliseconds) const;
    [[nodiscard]] bool makeDevice();
    [[nodiscard]] bool perform(const PostedEvent& event);
    [[nodiscard]] bool perform(const KeyEvent& event);
    [[nodiscard]] bool type(std::u32string_view text);
    [[nodiscard]] bool type(char32_t character);
    [[nodiscard]] bool pause();

    const InputConsent* consent_;
    std::unique_ptr<KernelInput> kernel_; ///< of the thread, once that runs
    PostedEvents events_;
    TrackedPointer pointer_;
    PointerSteps steps_;                   ///< of the thread
    std::unique_ptr<UinputDevice> device_; ///< of the thread
    std::thread thread_;                   ///< last: it uses the rest
};

/// The key of a US keyboard for a character, and whether Shift is held on it; none where there is none. Pure.
struct UsKey {
    quint16 code = 0;
    bool isShifted = false;

    friend bool operator==(const UsKey&, const UsKey&) = default;
};
[[nodiscard]] std::optional<UsKey> usKeyOf(char32_t character);

} // namespace brenvale
