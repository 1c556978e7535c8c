#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <array>

/// The frames that a WebSocket client puts on the wire, built ahead of time. A load generator builds its
/// messages once and then writes plain bytes, so that the phone's side costs next to nothing. Pure functions,
/// any thread.
namespace brenvale::phone {

enum class FrameType : quint8 { Continuation = 0, Text = 1, Binary = 2, Close = 8, Ping = 9, Pong = 10 };

/// The four bytes that a client has to mix into the payload of a frame.
using FrameMask = std::array<char, 4>;

inline constexpr FrameMask defaultFrameMask{'\x5a', '\x13', '\xc7', '\x2e'};

/// One masked frame with the shortest length field that holds the size of its payload.
QByteArray clientFrame(FrameType type, QByteArrayView payload, bool isLast = true,
                       const FrameMask& mask = defaultFrameMask);

/// Each message as one text frame, one after the other.
QByteArray textFrames(const QList<QByteArray>& messages);

/// One text message in several frames, each with at most fragmentSize bytes of it. An empty message is one
/// frame.
QByteArray fragmentedTextFrames(QByteArrayView message, qsizetype fragmentSize);

} // namespace brenvale::phone
