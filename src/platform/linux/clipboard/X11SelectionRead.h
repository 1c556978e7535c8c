#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"
#include "platform/linux/clipboard/X11SelectionAtoms.h"

#include <QObject>
#include <QTimer>

#include <optional>

#include <xcb/xproto.h>

namespace brenvale {

/// One question to the owner of a selection of X11, asked by a window of its own: an answer that comes after
/// we have given up meets a window that is gone, and is not taken for that to another question. On the
/// clipboard's thread.
class X11SelectionRead final : public QObject {
public:
    /// `finished` is called once, and does not destroy this.
    X11SelectionRead(xcb_connection_t* connection, X11SelectionAtoms& atoms, xcb_atom_t selection,
                     xcb_atom_t target, std::move_only_function<void()> finished);
    ~X11SelectionRead() override;
    X11SelectionRead(const X11SelectionRead&) = delete;
    X11SelectionRead& operator=(const X11SelectionRead&) = delete;

    void handle(const xcb_selection_notify_event_t& answer);
    void handle(const xcb_property_notify_event_t& change);

    /// Nothing comes any more.
    void giveUp() { finish(false); }

    [[nodiscard]] bool isFinished() const { return isFinished_; }
    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// What the owner gave; nothing where it refused or did not answer in time.
    [[nodiscard]] std::optional<QByteArray> takeBytes();

private:
    /// Whether a piece could be read; its size is that of what was added.
    bool takeProperty();
    void finish(bool isWhole);

    xcb_connection_t* connection_;
    X11SelectionAtoms& atoms_;
    xcb_window_t window_;
    std::move_only_function<void()> finished_;
    QTimer patience_; ///< starts anew with each piece
    QTimer limit_;    ///< however many pieces come
    QByteArray bytes_;
    bool comesInPieces_ = false;
    bool isFinished_ = false;
    bool isWhole_ = false;
};

} // namespace brenvale
