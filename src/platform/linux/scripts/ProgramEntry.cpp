#include "platform/linux/scripts/ProgramEntry.h"

#include "platform/linux/KeyFile.h"

#include <string_view>
#include <utility>

namespace brenvale {

namespace {

/// One argument of a command line as it is written, field codes and all.
struct Word {
    QString text;
    bool isQuoted = false;
};

/// The characters that stand for others in every text of a desktop entry, and what for.
constexpr std::u16string_view escapes = u"sntr\\";
constexpr std::u16string_view escaped = u" \n\t\r\\";

QString withoutEscapes(const QByteArray& value) {
    const auto text = QString::fromUtf8(value);
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size()) {
            const auto escape = escapes.find(text[i + 1].unicode());
            if (escape != std::u16string_view::npos) {
                plain.append(QChar(escaped[escape]));
                ++i;
                continue;
            }
        }
        plain.append(text[i]);
    }
    return plain;
}

/// The arguments of a command line; nothing where a quote has no end. Within quotes a backslash takes the
/// meaning from the character behind it.
std::optional<QList<Word>> split(const QString& line) {
    QList<Word> words;
    Word word;
    bool isInWord = false;
    bool isInQuotes = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar character = line[i];
        if (character == u'"') {
            isInQuotes = !isInQuotes;
            isInWord = true;
            word.isQuoted = true;
        } else if (character == u'\\' && isInQuotes && i + 1 < line.size()) {
            word.text.append(line[++i]);
        } else if (!isInQuotes && (character == u' ' || character == u'\t' || character == u'\n')) {
            if (std::exchange(isInWord, false)) {
                words.append(std::exchange(word, {}));
            }
        } else {
            word.text.append(character);
            isInWord = true;
        }
    }
    if (isInWord) {
        words.append(word);
    }
    return isInQuotes ? std::nullopt : std::optional(words);
}

/// Puts what they stand for in the place of field codes.
class Expansion {
public:
    Expansion(const ProgramEntry& entry, const QString& location, const QString& localPath)
        : entry_(entry), location_(location), localPath_(localPath) {}

    void add(const Word& word) {
        if (word.text == u"%i") {
            if (!entry_.icon.isEmpty()) {
                command_ << QStringLiteral("--icon") << entry_.icon;
            }
            return;
        }
        const auto expanded = expand(word.text);
        // A code that stands for nothing is no argument; two quotes with nothing between them are one.
        if (!expanded.isEmpty() || word.isQuoted) {
            command_.append(expanded);
        }
    }

    /// A program that says nothing of addresses gets this one as its last argument.
    [[nodiscard]] QStringList command() const {
        return isGiven_ || command_.isEmpty() ? command_ : command_ + QStringList{fileArgument()};
    }

private:
    QString expand(const QString& text) {
        QString expanded;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i] == u'%' && i + 1 < text.size()) {
                expanded.append(meaning(text[++i]));
            } else {
                expanded.append(text[i]);
            }
        }
        return expanded;
    }

    QString meaning(QChar code) {
        switch (code.unicode()) {
        case u'u':
        case u'U':
            isGiven_ = true;
            return location_;
        case u'f':
        case u'F':
            isGiven_ = true;
            return fileArgument();
        case u'c':
            return entry_.name;
        case u'k':
            return entry_.path;
        case u'%':
            return QStringLiteral("%");
        default:
            return {}; // codes that are no longer in use, and unknown ones
        }
    }

    [[nodiscard]] QString fileArgument() const { return localPath_.isEmpty() ? location_ : localPath_; }

    const ProgramEntry& entry_;
    const QString& location_;
    const QString& localPath_;
    QStringList command_;
    bool isGiven_ = false;
};

} // namespace

std::optional<ProgramEntry> readProgramEntry(const QByteArray& text, const QString& path) {
    const auto value = [&](const char* key) {
        return keyFileValue(text, "[Desktop Entry]", key).value_or(QByteArray());
    };
    ProgramEntry entry{.path = path,
                       .exec = value("Exec"),
                       .name = withoutEscapes(value("Name")),
                       .icon = withoutEscapes(value("Icon")),
                       .tryExec = withoutEscapes(value("TryExec"))};
    if (value("Hidden") == "true" || value("Terminal") == "true" || entry.exec.isEmpty()) {
        return {};
    }
    return entry;
}

QStringList programCommand(const ProgramEntry& entry, const QString& location, const QString& localPath) {
    const auto words = split(withoutEscapes(entry.exec));
    if (!words) {
        return {};
    }
    Expansion expansion(entry, location, localPath);
    for (const auto& word : *words) {
        expansion.add(word);
    }
    return expansion.command();
}

} // namespace brenvale
