// The kernel's input device behind the contract, on a kernel that is none: it takes calls as the real one
// does, and hands the keys to a desktop with a US keyboard.
#include "EventPosterContract.h"
#include "SeenInput.h"

#include "platform/linux/input/UinputEventPoster.h"

#include <mutex>
#include <set>

#include <linux/uinput.h>

namespace brenvale {

namespace {

/// What outlives the kernel, which belongs to the poster.
struct DesktopOfKernel {
    SeenInput seen;
    std::mutex standstill; ///< whoever holds it keeps the kernel's calls from coming back
};

class KernelOfDesktop final : public KernelInput {
public:
    explicit KernelOfDesktop(DesktopOfKernel& desktop) : desktop_(desktop) {}

    bool open() override { return true; }

    bool control(unsigned long request, std::uintptr_t argument) override {
        if (request == UI_SET_KEYBIT) {
            keys_.insert(argument);
        } else if (request == UI_DEV_CREATE) {
            isCreated_ = true;
        } else if (request == UI_DEV_DESTROY) {
            isCreated_ = false;
        }
        return true;
    }

    bool write(std::span<const input_event> events) override {
        const std::scoped_lock moving(desktop_.standstill);
        for (const auto& event : events) {
            if (event.type == EV_SYN) {
                deliver();
            } else {
                waiting_.push_back(event);
            }
        }
        return isCreated_;
    }

    void close() override {}

private:
    void deliver() {
        QPoint move;
        for (const auto& event : std::exchange(waiting_, {})) {
            if (event.type == EV_REL) {
                (event.code == REL_X ? move.rx() : move.ry()) += event.value;
            } else if (isCreated_ && event.type == EV_KEY && keys_.contains(event.code)) {
                key(event.code, event.value != 0);
            }
        }
        if (!move.isNull()) {
            desktop_.seen.move(move);
        }
    }

    void key(quint16 code, bool isDown) {
        if (isDown == down_.contains(code)) {
            return; // as it is already
        }
        isDown ? void(down_.insert(code)) : void(down_.erase(code));
        if (code == BTN_LEFT || code == BTN_RIGHT) {
            desktop_.seen.button(code == BTN_RIGHT, isDown);
        } else {
            const auto [keysym, held] = keyboard_.key(code, isDown);
            desktop_.seen.key(keysym, isDown, held);
        }
    }

    DesktopOfKernel& desktop_;
    UsKeyboard keyboard_;
    std::set<std::uintptr_t> keys_; ///< what the device was said to have: the kernel drops others
    std::set<quint16> down_;
    std::vector<input_event> waiting_; ///< for the mark that ends a report
    bool isCreated_ = false;
};

class UinputTrial final : public PosterTrial {
public:
    [[nodiscard]] EventPoster& poster() override { return poster_; }
    [[nodiscard]] QStringList seenUntil(const QString& end) override { return desktop_.seen.seenUntil(end); }
    [[nodiscard]] bool typesAnyText() const override { return false; }
    [[nodiscard]] bool stall() override {
        desktop_.standstill.lock();
        return true;
    }
    void resume() override { desktop_.standstill.unlock(); }

private:
    DesktopOfKernel desktop_;
    UinputEventPoster poster_{std::make_unique<KernelOfDesktop>(desktop_)};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Uinput, EventPosterContract,
                         testing::Values(MakePosterTrial{"Uinput", [] {
                                                             return std::make_unique<UinputTrial>();
                                                         }}));

} // namespace brenvale
