#include "link/WebSocketServer.h"
#include "platform/EventPoster.h"
#include "platform/Platform.h"
#include "remote/RemoteCommand.h"

namespace brenvale {

namespace {

constexpr quint16 noKey = 0;
constexpr qint16 auxiliaryControlButtons = 8;

// The flags of a system key say whether it goes down or up, in the event's flags and in its data alike.
constexpr quint32 systemKeyDown = 0xa00;
constexpr quint32 systemKeyUp = 0xb00;

SystemDefinedEvent systemKeyEvent(qint32 key, quint32 flags) {
    const auto data = static_cast<qint32>((static_cast<quint32>(key) << 16U) | flags);
    return {.flags = flags, .subtype = auxiliaryControlButtons, .data1 = data, .data2 = -1};
}

} // namespace

void WebSocketServer::sendCGKey(quint16 keyCode, const std::vector<std::string_view>& modifiers) {
    auto& poster = platform_.eventPoster;
    if (!poster.canMakeEvents()) {
        return;
    }
    // The modifiers are flags of the one key's two events: no key of theirs is pressed.
    KeyEvent event{.keyCode = keyCode, .flags = flagsOf(modifiers), .isDown = true, .text = {}};
    poster.post(event);
    event.isDown = false;
    poster.post(event);
}

void WebSocketServer::sendSystemMediaKey(qint32 key) {
    auto& poster = platform_.eventPoster;
    for (const auto flags : {systemKeyDown, systemKeyUp}) { // two events: one may fail without the other
        if (poster.canMakeEvents()) {
            poster.post(systemKeyEvent(key, flags));
        }
    }
}

void WebSocketServer::sendUnicodeText(const QString& text) {
    auto& poster = platform_.eventPoster;
    if (!poster.canMakeEvents()) {
        return;
    }
    poster.post(KeyEvent{.keyCode = noKey, .flags = 0, .isDown = true, .text = text});
    if (poster.canMakeEvents()) {
        poster.post(KeyEvent{.keyCode = noKey, .flags = 0, .isDown = false, .text = {}});
    }
}

void WebSocketServer::moveMouse(EventPoster& poster, double dx, double dy) {
    if (!poster.canMakeEvents()) {
        return;
    }
    // Neither scaled nor kept on a screen: that is the desktop's business.
    const auto position = poster.pointerLocation() + QPointF(dx, dy);
    poster.post(MouseEvent{.type = MouseEvent::Type::moved, .position = position, .button = 0});
}

void WebSocketServer::clickMouse(EventPoster& poster, bool isRight) {
    if (!poster.canMakeEvents()) {
        return;
    }
    using enum MouseEvent::Type;
    MouseEvent event{.type = isRight ? rightDown : leftDown,
                     .position = poster.pointerLocation(),
                     .button = static_cast<quint8>(isRight ? 1 : 0)};
    poster.post(event);
    event.type = isRight ? rightUp : leftUp;
    poster.post(event);
}

} // namespace brenvale
