#include "platform/linux/clipboard/X11SelectionServer.h"

#include "platform/linux/clipboard/SelectionLimits.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <span>
#include <utility>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

constexpr std::uint8_t bitsOfBytes = 8;
constexpr std::uint8_t bitsOfAtoms = 32;
constexpr qsizetype largestPiece = 256 << 10;
constexpr std::size_t mostTransfers = 64;
constexpr std::uint32_t mostPairs = 64;

void setProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 QByteArrayView bytes) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, bitsOfBytes,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void setProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 std::span<const std::uint32_t> numbers) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, bitsOfAtoms,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

} // namespace

void X11SelectionServer::owns(Selection selection, ClipboardContents contents, xcb_timestamp_t time) {
    owned_.at(std::to_underlying(selection)) = Owned{.contents = std::move(contents), .since = time};
}

void X11SelectionServer::lost(Selection selection) {
    owned_.at(std::to_underlying(selection)).reset();
}

const ClipboardContents* X11SelectionServer::owned(Selection selection) const {
    const auto& owned = owned_.at(std::to_underlying(selection));
    return owned ? &owned->contents : nullptr;
}

xcb_timestamp_t X11SelectionServer::ownedSince(Selection selection) const {
    const auto& owned = owned_.at(std::to_underlying(selection));
    return owned ? owned->since : xcb_timestamp_t{XCB_CURRENT_TIME};
}

const X11SelectionServer::Owned* X11SelectionServer::ownedBy(xcb_atom_t selection) {
    for (const auto each : {Selection::clipboard, Selection::primary}) {
        const auto& owned = owned_.at(std::to_underlying(each));
        if (owned && atoms_.atom(each) == selection) {
            return &*owned;
        }
    }
    return nullptr;
}

void X11SelectionServer::handle(const xcb_selection_request_event_t& request) {
    const auto* owned = ownedBy(request.selection);
    // Programs of old name no property, and mean that of the target.
    const auto property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    const bool isOfOurTime =
        owned != nullptr && (request.time == XCB_CURRENT_TIME || request.time >= owned->since);
    const bool isConverted = isOfOurTime && convert(*owned, request.requestor, request.target, property);
    const xcb_selection_notify_event_t answer{.response_type = XCB_SELECTION_NOTIFY,
                                              .time = request.time,
                                              .requestor = request.requestor,
                                              .selection = request.selection,
                                              .target = request.target,
                                              .property = isConverted ? property : xcb_atom_t{XCB_ATOM_NONE}};
    // Events on the wire are of one size, larger than this one.
    std::array<char, 32> event{};
    std::ranges::copy(std::span(reinterpret_cast<const char*>(&answer), sizeof answer), event.begin());
    xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.data());
}

bool X11SelectionServer::convert(const Owned& owned, xcb_window_t requestor, xcb_atom_t target,
                                 xcb_atom_t property) {
    const auto name = atoms_.name(target);
    if (name == "TARGETS") {
        setProperty(connection_, requestor, property, XCB_ATOM_ATOM, targets(owned));
        return true;
    }
    if (name == "TIMESTAMP") {
        setProperty(connection_, requestor, property, XCB_ATOM_INTEGER, std::span(&owned.since, 1));
        return true;
    }
    if (name == "SAVE_TARGETS") {
        setProperty(connection_, requestor, property, atoms_.atom("NULL"), QByteArrayView());
        return true;
    }
    return name == "MULTIPLE" ? convertMultiple(owned, requestor, property)
                              : sendContents(owned, requestor, target, property);
}

std::vector<xcb_atom_t> X11SelectionServer::targets(const Owned& owned) {
    std::vector<xcb_atom_t> targets;
    for (const auto* const question : {"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS"}) {
        targets.push_back(atoms_.atom(question));
    }
    for (const auto& item : owned.contents.items) {
        targets.push_back(atoms_.atom(item.format));
    }
    return targets;
}

/// A list of pairs, target and property, in a property of the program that asks; what fails is struck out.
bool X11SelectionServer::convertMultiple(const Owned& owned, xcb_window_t requestor, xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(connection_, 0, requestor, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 2 * mostPairs);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection_, cookie, nullptr), std::free);
    if (!reply || reply->format != bitsOfAtoms) {
        return false;
    }
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    std::vector<xcb_atom_t> pairs(atoms, std::next(atoms, reply->value_len));
    pairs.resize(pairs.size() / 2 * 2);
    const auto multiple = atoms_.atom("MULTIPLE");
    for (std::size_t pair = 0; pair < pairs.size(); pair += 2) {
        const auto target = pairs[pair];
        auto& place = pairs[pair + 1];
        if (target == multiple || place == XCB_ATOM_NONE || !convert(owned, requestor, target, place)) {
            place = XCB_ATOM_NONE;
        }
    }
    setProperty(connection_, requestor, property, reply->type, pairs);
    return true;
}

bool X11SelectionServer::sendContents(const Owned& owned, xcb_window_t requestor, xcb_atom_t target,
                                      xcb_atom_t property) {
    const auto name = atoms_.name(target);
    const auto* found = owned.contents.find(name);
    if (found == nullptr) {
        return false;
    }
    // STRING is Latin-1 by the rules of X11, and TEXT says by its type which encoding we chose.
    const bool isText = owned.contents.find("UTF8_STRING") != nullptr;
    const auto bytes = name == "STRING" && isText ? QString::fromUtf8(*found).toLatin1() : *found;
    const auto type = name == "TEXT" && isText ? atoms_.atom("UTF8_STRING") : target;
    if (bytes.size() > pieceSize()) {
        sendInPieces(requestor, property, type, bytes);
    } else {
        setProperty(connection_, requestor, property, type, bytes);
    }
    return true;
}

void X11SelectionServer::sendInPieces(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                                      const QByteArray& bytes) {
    std::erase_if(transfers_, [requestor, property](const Transfer& transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    if (transfers_.size() >= mostTransfers) {
        drop(transfers_.begin());
    }
    watch(requestor, true);
    Transfer transfer{.requestor = requestor, .property = property, .type = type, .bytes = bytes};
    transfer.idle.start();
    transfers_.push_back(std::move(transfer));
    const auto size = static_cast<std::uint32_t>(bytes.size());
    setProperty(connection_, requestor, property, atoms_.atom("INCR"), std::span(&size, 1));
}

/// The program has taken a piece: here is the next, and at the end an empty one.
void X11SelectionServer::handle(const xcb_property_notify_event_t& change) {
    const auto transfer = std::ranges::find_if(transfers_, [&change](const Transfer& each) {
        return each.requestor == change.window && each.property == change.atom;
    });
    if (change.state != XCB_PROPERTY_DELETE || transfer == transfers_.end()) {
        return;
    }
    const auto piece = QByteArrayView(transfer->bytes)
                           .sliced(transfer->sent)
                           .first(std::min(pieceSize(), transfer->bytes.size() - transfer->sent));
    setProperty(connection_, transfer->requestor, transfer->property, transfer->type, piece);
    transfer->sent += piece.size();
    transfer->idle.start();
    if (piece.isEmpty()) {
        drop(transfer);
    }
}

void X11SelectionServer::handle(const xcb_destroy_notify_event_t& end) {
    std::erase_if(transfers_, [&end](const Transfer& each) { return each.requestor == end.window; });
}

void X11SelectionServer::dropStalled() {
    for (;;) {
        const auto stalled = std::ranges::find_if(transfers_, [](const Transfer& each) {
            return each.idle.hasExpired(std::chrono::milliseconds(patienceForAReader).count());
        });
        if (stalled == transfers_.end()) {
            return;
        }
        drop(stalled);
    }
}

void X11SelectionServer::drop(std::vector<Transfer>::iterator transfer) {
    const auto requestor = transfer->requestor;
    transfers_.erase(transfer);
    if (std::ranges::find(transfers_, requestor, &Transfer::requestor) == transfers_.end()) {
        watch(requestor, false);
    }
}

void X11SelectionServer::watch(xcb_window_t requestor, bool isWatched) {
    const std::uint32_t mask = isWatched ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
                                         : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(connection_, requestor, XCB_CW_EVENT_MASK, &mask);
}

qsizetype X11SelectionServer::pieceSize() const {
    constexpr qsizetype unit = 4;
    constexpr qsizetype headerSize = 64;
    return std::min(largestPiece, (unit * xcb_get_maximum_request_length(connection_)) - headerSize);
}

} // namespace brenvale
