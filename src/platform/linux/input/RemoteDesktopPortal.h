#pragma once

#include "platform/EventPoster.h"
#include "platform/linux/input/InputConsent.h"

#include <QThread>

#include <memory>

namespace brenvale {

class DispatchQueue;
class TextLender;

/// Posts by the desktop's portal for remote desktops, for which the user consents once. All of it happens on
/// a thread of its own and a bus connection of its own, so that a portal that hangs, and a main thread that
/// is busy, hold up nobody who posts. What comes before the consent vanishes.
class RemoteDesktopPortal final : public EventPoster, public InputConsent {
public:
    /// `lender` is null where no text can be pasted. Both live for longer.
    RemoteDesktopPortal(DispatchQueue& main, TextLender* lender);
    ~RemoteDesktopPortal() override;
    RemoteDesktopPortal(const RemoteDesktopPortal&) = delete;
    RemoteDesktopPortal& operator=(const RemoteDesktopPortal&) = delete;

    [[nodiscard]] bool canMakeEvents() const override;
    [[nodiscard]] QPointF pointerLocation() const override;
    void post(const KeyEvent& event) override;
    void post(const SystemDefinedEvent& event) override;
    void post(const MouseEvent& event) override;

    [[nodiscard]] bool canAsk() const override;
    [[nodiscard]] bool hasNobodyToAsk() const override;
    void ask(Occasion occasion) override;
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

private:
    struct Shared;
    class Worker;

    std::shared_ptr<Shared> shared_; ///< with the thread, and with steps on their way to main
    std::unique_ptr<QThread> thread_;
    Worker* worker_; ///< lives and ends on the thread
};

} // namespace brenvale
