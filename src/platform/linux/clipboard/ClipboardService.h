#pragma once

#include "platform/MainQueue.h"
#include "platform/linux/clipboard/ClipboardContents.h"
#include "platform/linux/input/TextLender.h"

#include <QThread>

#include <functional>
#include <memory>
#include <optional>

namespace brenvale {

/// The desktop's selections without the focus, by the best way that the session has: the data control of
/// Wayland compositors, else the selections of X11. It works on a thread of its own, so that neither side
/// ever waits: a window of ours that pastes waits on main for what this serves. On main; answers come on
/// main.
class ClipboardService final : public TextLender {
public:
    using Text = std::move_only_function<void(std::optional<QString>)>;

    enum class Session : quint8 { none, x11, wayland };

    ClipboardService(DispatchQueue& main, Session session);
    ~ClipboardService() override;
    ClipboardService(const ClipboardService&) = delete;
    ClipboardService& operator=(const ClipboardService&) = delete;

    /// Takes the selection over; without any format, takes it away from whoever has it. Where the session has
    /// no way, `refused` is called.
    void own(Selection selection, ClipboardContents contents, std::move_only_function<void()> refused);

    /// Reads the selection as text. Where the session has no way, `refused` is called in place of `answer`.
    void readText(Selection selection, Text answer, std::move_only_function<void(Text)> refused);

    /// For typing what the keyboard cannot: puts `text` on both selections, keeping what the user has there,
    /// and calls `lent` when a program that pastes gets it; with false where the session has no way. While a
    /// loan stands the next one replaces its text alone. Any thread.
    void lend(const QString& text, std::move_only_function<void(bool)> lent) override;

    /// Ends the loan: what the user had is back, save where a program took the selection meanwhile. Programs
    /// that were told to paste must have done so. Any thread.
    void giveBack() override;

    /// Ends a loan and has the desktop's clipboard manager keep what we own, waiting a few seconds for it at
    /// most. From then on nothing is lent.
    void saveBeforeEnd();

private:
    class Worker;

    DispatchQueue& main_;
    QThread thread_;
    MainQueue queue_;                ///< of the thread
    std::unique_ptr<Worker> worker_; ///< lives and ends on the thread
};

} // namespace brenvale
