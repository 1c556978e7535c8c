#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>
#include <vector>

namespace brenvale {

/// The two places of a desktop from which programs paste: by Ctrl+V, and by the middle button.
enum class Selection : quint8 { clipboard, primary };

/// What an owner of a selection offers, by format: the name of a media type, or one of the old names of X11
/// for text. Without a format it is nothing. A value; copies share the bytes.
struct ClipboardContents {
    struct Item {
        QByteArray format;
        QByteArray bytes;

        friend bool operator==(const Item&, const Item&) = default;
    };

    std::vector<Item> items;

    /// A text under all the names by which programs ask for text.
    [[nodiscard]] static ClipboardContents ofText(const QString& text);

    [[nodiscard]] QByteArrayList formats() const;

    /// Null where there is no such format.
    [[nodiscard]] const QByteArray* find(QByteArrayView format) const;

    friend bool operator==(const ClipboardContents&, const ClipboardContents&) = default;
};

/// Keeps clipboard managers from writing the contents into their history.
void markAsSecret(ClipboardContents& contents);

/// The format by which to read text from an owner that offers `formats`: nothing where none is text, as with
/// files or pictures alone.
[[nodiscard]] std::optional<QByteArray> textFormatAmong(const QByteArrayList& formats);

/// The text that an owner gave as `format`.
[[nodiscard]] QString decodedText(const QByteArray& format, QByteArrayView bytes);

/// Whether the name stands for contents, and not for a question of the X11 protocol to the owner.
[[nodiscard]] bool isContentsFormat(QByteArrayView format);

} // namespace brenvale
