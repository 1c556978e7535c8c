#include "platform/linux/clipboard/X11SelectionAtoms.h"

#include "platform/linux/X11Connection.h"

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

// Names come from other programs too, which may make up as many as they like.
constexpr qsizetype mostNames = 1000;

} // namespace

xcb_atom_t X11SelectionAtoms::atom(const QByteArray& name) {
    if (const auto known = atoms_.constFind(name); known != atoms_.cend()) {
        return *known;
    }
    const auto atom = x11Atom(connection_, {name.constData(), static_cast<std::size_t>(name.size())});
    if (atom != XCB_ATOM_NONE && atoms_.size() < mostNames) {
        atoms_.insert(name, atom);
    }
    return atom;
}

QByteArray X11SelectionAtoms::name(xcb_atom_t atom) {
    if (const auto known = names_.constFind(atom); known != names_.cend()) {
        return *known;
    }
    const std::unique_ptr<xcb_get_atom_name_reply_t, decltype(&std::free)> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr), std::free);
    if (!reply) {
        return {};
    }
    QByteArray name(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    if (names_.size() < mostNames) {
        names_.insert(atom, name);
    }
    return name;
}

} // namespace brenvale
