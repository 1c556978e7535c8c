#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"
#include "platform/linux/clipboard/X11SelectionAtoms.h"
#include "platform/linux/clipboard/X11SelectionRead.h"
#include "platform/linux/clipboard/X11SelectionServer.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace brenvale {

/// The selections of X11, by a connection of our own. It may wait for the X server, never for another
/// program: on the clipboard's thread.
class X11Selections final : public QObject, public SelectionAccess {
public:
    /// Null where no X server answers.
    [[nodiscard]] static std::unique_ptr<X11Selections> open();

    ~X11Selections() override;
    X11Selections(const X11Selections&) = delete;
    X11Selections& operator=(const X11Selections&) = delete;

    void own(Selection selection, ClipboardContents contents) override;
    [[nodiscard]] const ClipboardContents* owned(Selection selection) const override;
    void readFormats(Selection selection, Formats answer) override;
    void read(Selection selection, const QByteArray& format, Bytes answer) override;
    void settle(std::move_only_function<void()> answer) override;
    void saveBeforeEnd(std::move_only_function<void()> answer) override;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    struct Reading {
        std::unique_ptr<X11SelectionRead> read;
        Bytes answer;
    };

    explicit X11Selections(xcb_connection_t* connection);

    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(connection_.get()) == 0; }
    [[nodiscard]] xcb_timestamp_t serverTime();
    [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection);
    void ask(xcb_atom_t selection, xcb_atom_t target, Bytes answer);
    void answerSoon();
    void answerFinished();
    void serve();
    void handle(const xcb_generic_event_t& event);
    void handle(const xcb_selection_clear_event_t& loss);
    void handle(const xcb_property_notify_event_t& change);

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    X11SelectionAtoms atoms_;
    X11SelectionServer server_;
    xcb_window_t window_;                         ///< the owner
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME; ///< of the last change of our window
    std::vector<Reading> readings_;
    QSocketNotifier arrival_;
    QTimer stalls_; ///< looks for programs that do not read on
};

} // namespace brenvale
