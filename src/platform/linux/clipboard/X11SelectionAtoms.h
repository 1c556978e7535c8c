#pragma once

#include "platform/linux/clipboard/ClipboardContents.h"

#include <QByteArray>
#include <QHash>

#include <xcb/xproto.h>

namespace brenvale {

/// The X server's numbers for names, and the names of its numbers, each asked for once. Waits for the server:
/// on the clipboard's thread.
class X11SelectionAtoms {
public:
    explicit X11SelectionAtoms(xcb_connection_t* connection) : connection_(connection) {}

    [[nodiscard]] xcb_atom_t atom(const QByteArray& name);

    /// Empty where the server knows no such number.
    [[nodiscard]] QByteArray name(xcb_atom_t atom);

    [[nodiscard]] xcb_atom_t atom(Selection selection) {
        return selection == Selection::primary ? xcb_atom_t{XCB_ATOM_PRIMARY} : atom("CLIPBOARD");
    }

private:
    xcb_connection_t* connection_;
    QHash<QByteArray, xcb_atom_t> atoms_;
    QHash<xcb_atom_t, QByteArray> names_;
};

} // namespace brenvale
