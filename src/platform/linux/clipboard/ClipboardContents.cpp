#include "platform/linux/clipboard/ClipboardContents.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

/// The names of text, the one that says most about it first.
constexpr std::array textFormats{QByteArrayView("text/plain;charset=utf-8"), QByteArrayView("UTF8_STRING"),
                                 QByteArrayView("text/plain"), QByteArrayView("STRING"),
                                 QByteArrayView("TEXT")};

/// What X11 programs ask an owner beside its contents.
constexpr std::array questions{QByteArrayView("TARGETS"),        QByteArrayView("TIMESTAMP"),
                               QByteArrayView("MULTIPLE"),       QByteArrayView("SAVE_TARGETS"),
                               QByteArrayView("DELETE"),         QByteArrayView("INSERT_SELECTION"),
                               QByteArrayView("INSERT_PROPERTY")};

bool isSame(QByteArrayView name, QByteArrayView format) {
    return format.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

ClipboardContents ClipboardContents::ofText(const QString& text) {
    ClipboardContents contents;
    const auto bytes = text.toUtf8();
    for (const auto format : textFormats) {
        contents.items.push_back({.format = format.toByteArray(), .bytes = bytes});
    }
    return contents;
}

QByteArrayList ClipboardContents::formats() const {
    QByteArrayList formats;
    for (const auto& item : items) {
        formats.append(item.format);
    }
    return formats;
}

const QByteArray* ClipboardContents::find(QByteArrayView format) const {
    const auto item =
        std::ranges::find_if(items, [format](const Item& each) { return each.format == format; });
    return item != items.end() ? &item->bytes : nullptr;
}

void markAsSecret(ClipboardContents& contents) {
    contents.items.push_back({.format = "x-kde-passwordManagerHint", .bytes = "secret"});
}

std::optional<QByteArray> textFormatAmong(const QByteArrayList& formats) {
    for (const auto wanted : textFormats) {
        const auto found =
            std::ranges::find_if(formats, [wanted](const auto& format) { return isSame(wanted, format); });
        if (found != formats.end()) {
            return *found;
        }
    }
    return std::nullopt;
}

QString decodedText(const QByteArray& format, QByteArrayView bytes) {
    if (bytes.endsWith('\0')) { // some owners count the end of their string with it
        bytes.chop(1);
    }
    if (format == "STRING") {
        return QString::fromLatin1(bytes);
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    const bool mayBeOther = isSame("text/plain", format) || format == "TEXT"; // these name no encoding
    return mayBeOther && decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

bool isContentsFormat(QByteArrayView format) {
    return std::ranges::none_of(questions, [format](auto question) { return isSame(question, format); });
}

} // namespace brenvale
