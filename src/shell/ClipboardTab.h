#pragma once

#include "shell/ClipboardListModel.h"

#include <QObject>

namespace brenvale {

class HistoryStore;
class Pasteboard;
class WebSocketServer;

/// The state of the tab with the texts that the phone put on the desktop's clipboard. On main.
class ClipboardTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(brenvale::CountedListModel* clipboardHistory READ clipboardHistory CONSTANT)

public:
    /// All arguments must outlive the tab.
    ClipboardTab(HistoryStore& history, WebSocketServer& server, Pasteboard& pasteboard);
    ~ClipboardTab() override;
    ClipboardTab(const ClipboardTab&) = delete;
    ClipboardTab& operator=(const ClipboardTab&) = delete;

    [[nodiscard]] ClipboardListModel* clipboardHistory() { return &clipboardHistory_; }

    Q_INVOKABLE void clearClipboard();
    Q_INVOKABLE void sendCurrentClipboard();
    Q_INVOKABLE void copyText(const QString& text);

private:
    HistoryStore& history_;
    WebSocketServer& server_;
    Pasteboard& pasteboard_;
    ClipboardListModel clipboardHistory_;
};

} // namespace brenvale
