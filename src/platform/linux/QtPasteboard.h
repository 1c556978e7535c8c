#pragma once

#include "platform/Pasteboard.h"

#include <memory>

class QWindow;

namespace brenvale {

/// The clipboard by the toolkit. On X11 the server lets nobody have it who asks with a time older than that
/// of the present owner, and the toolkit's time is that of the last event it saw, which for a program without
/// windows may be long ago: then the time is brought up to date and the text offered once more.
class QtPasteboard final : public Pasteboard {
public:
    QtPasteboard();
    ~QtPasteboard() override;
    QtPasteboard(const QtPasteboard&) = delete;
    QtPasteboard& operator=(const QtPasteboard&) = delete;

    void clearContents() override;
    void setString(const QString& text) override;
    void string(TextAnswer answer) override;

private:
    void offer(const QString& text, int triesLeft);
    void bringTimeUpToDate();

    std::unique_ptr<QWindow> clock_; ///< never shown: its changes are events with a time
    quint64 offers_ = 0;             ///< so that an old text is not offered over a newer one
};

} // namespace brenvale
