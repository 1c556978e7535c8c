#pragma once

#include "platform/linux/clipboard/ClipboardContents.h"
#include "platform/linux/clipboard/X11SelectionAtoms.h"

#include <QElapsedTimer>

#include <array>
#include <chrono>
#include <optional>
#include <vector>

#include <xcb/xproto.h>

namespace brenvale {

/// Answers the programs that ask for a selection of X11 that we own, long contents piece by piece as each
/// asks for more. On the clipboard's thread.
class X11SelectionServer {
public:
    X11SelectionServer(xcb_connection_t* connection, X11SelectionAtoms& atoms)
        : connection_(connection), atoms_(atoms) {}

    /// Ours since `time`, the server's.
    void owns(Selection selection, ClipboardContents contents, xcb_timestamp_t time);
    void lost(Selection selection);

    [[nodiscard]] const ClipboardContents* owned(Selection selection) const;
    [[nodiscard]] xcb_timestamp_t ownedSince(Selection selection) const;

    void handle(const xcb_selection_request_event_t& request);
    void handle(const xcb_property_notify_event_t& change);
    void handle(const xcb_destroy_notify_event_t& end);

    /// Gives programs up that have not asked for their next piece for long.
    void dropStalled();
    [[nodiscard]] bool isSending() const { return !transfers_.empty(); }

private:
    struct Owned {
        ClipboardContents contents;
        xcb_timestamp_t since = XCB_CURRENT_TIME;
    };

    /// Contents on their way in pieces.
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        QByteArray bytes;
        qsizetype sent = 0;
        QElapsedTimer idle;
    };

    [[nodiscard]] const Owned* ownedBy(xcb_atom_t selection);
    bool convert(const Owned& owned, xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(const Owned& owned, xcb_window_t requestor, xcb_atom_t property);
    bool sendContents(const Owned& owned, xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    void sendInPieces(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray& bytes);
    void watch(xcb_window_t requestor, bool isWatched);
    void drop(std::vector<Transfer>::iterator transfer);
    [[nodiscard]] std::vector<xcb_atom_t> targets(const Owned& owned);
    [[nodiscard]] qsizetype pieceSize() const;

    xcb_connection_t* connection_;
    X11SelectionAtoms& atoms_;
    std::array<std::optional<Owned>, 2> owned_;
    std::vector<Transfer> transfers_;
};

} // namespace brenvale
