#pragma once

#include "platform/DispatchQueue.h"
#include "platform/Pasteboard.h"
#include "platform/linux/QtPasteboard.h"
#include "platform/linux/clipboard/ClipboardService.h"

namespace brenvale {

/// The clipboard of the session without the focus; where the session has no way to that, the toolkit's, which
/// works while a window of ours has the focus.
class DesktopPasteboard final : public Pasteboard {
public:
    /// Both outlive this.
    DesktopPasteboard(DispatchQueue& main, ClipboardService& service) : main_(main), service_(service) {}

    void clearContents() override;
    void setString(const QString& text) override;
    void string(TextAnswer answer) override;

private:
    DispatchQueue& main_;
    ClipboardService& service_;
    QtPasteboard toolkit_;
    bool isToBeCleared_ = false;
};

} // namespace brenvale
