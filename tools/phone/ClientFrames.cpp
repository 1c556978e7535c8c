#include "ClientFrames.h"

#include <QtEndian>

#include <algorithm>
#include <iterator>

namespace brenvale::phone {
namespace {

constexpr quint8 finalFrame = 0x80;
constexpr quint8 maskedPayload = 0x80;
constexpr qsizetype largestShortLength = 125;
constexpr quint8 lengthIn16Bits = 126;
constexpr quint8 lengthIn64Bits = 127;
constexpr qsizetype largestHeader = 14;

template <class Number>
void appendBigEndian(QByteArray& out, Number number) {
    std::array<char, sizeof(Number)> bytes{};
    qToBigEndian(number, bytes.data());
    out.append(bytes.data(), std::ssize(bytes));
}

void appendLength(QByteArray& out, qsizetype length) {
    if (length <= largestShortLength) {
        out.append(static_cast<char>(maskedPayload | static_cast<quint8>(length)));
    } else if (length <= 0xffff) {
        out.append(static_cast<char>(maskedPayload | lengthIn16Bits));
        appendBigEndian(out, static_cast<quint16>(length));
    } else {
        out.append(static_cast<char>(maskedPayload | lengthIn64Bits));
        appendBigEndian(out, static_cast<quint64>(length));
    }
}

void appendMasked(QByteArray& out, QByteArrayView payload, const FrameMask& mask) {
    const qsizetype start = out.size();
    out.append(payload);
    char* const bytes = out.data() + start;
    for (qsizetype i = 0; i < payload.size(); ++i) {
        bytes[i] = static_cast<char>(bytes[i] ^ mask[static_cast<std::size_t>(i) % mask.size()]);
    }
}

void appendFrame(QByteArray& out, FrameType type, QByteArrayView payload, bool isLast,
                 const FrameMask& mask) {
    out.append(static_cast<char>(static_cast<quint8>(type) | (isLast ? finalFrame : quint8{0})));
    appendLength(out, payload.size());
    out.append(mask.data(), std::ssize(mask));
    appendMasked(out, payload, mask);
}

} // namespace

QByteArray clientFrame(FrameType type, QByteArrayView payload, bool isLast, const FrameMask& mask) {
    QByteArray frame;
    frame.reserve(payload.size() + largestHeader);
    appendFrame(frame, type, payload, isLast, mask);
    return frame;
}

QByteArray textFrames(const QList<QByteArray>& messages) {
    qsizetype size = 0;
    for (const QByteArray& message : messages) {
        size += message.size() + largestHeader;
    }
    QByteArray frames;
    frames.reserve(size);
    for (const QByteArray& message : messages) {
        appendFrame(frames, FrameType::Text, message, true, defaultFrameMask);
    }
    return frames;
}

QByteArray fragmentedTextFrames(QByteArrayView message, qsizetype fragmentSize) {
    const qsizetype step = std::max(qsizetype{1}, fragmentSize);
    QByteArray frames;
    qsizetype done = 0;
    do {
        const qsizetype size = std::min(step, message.size() - done);
        const FrameType type = done == 0 ? FrameType::Text : FrameType::Continuation;
        const bool isLast = done + size == message.size();
        appendFrame(frames, type, message.sliced(done, size), isLast, defaultFrameMask);
        done += size;
    } while (done < message.size());
    return frames;
}

} // namespace brenvale::phone
