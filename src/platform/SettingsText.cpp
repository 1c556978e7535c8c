#include "platform/SettingsText.h"

#include <optional>

namespace brenvale {

namespace {

/// Qt writes the '#' of a remark that looks like a key and a value as it writes other signs in keys.
bool isRemark(QStringView line) {
    return line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#') || line.startsWith(u"%23");
}

/// Without its quotes and the remark behind it; nothing where a quote has no end.
std::optional<QString> valueOf(QStringView text) {
    QString value;
    bool isQuoted = false;
    for (const auto character : text) {
        if (character == u'"') {
            isQuoted = !isQuoted;
        } else if (character == u';' && !isQuoted) {
            break;
        } else {
            value += character;
        }
    }
    return isQuoted || value.endsWith(u'\\') ? std::nullopt : std::optional(value.trimmed());
}

/// Whether the line was understood.
bool read(QStringView line, QString& section, SettingsSections& sections) {
    if (line.startsWith(u'[')) {
        const bool isClosed = line.endsWith(u']');
        section = isClosed ? line.sliced(1, line.size() - 2).trimmed().toString() : QString();
        return isClosed;
    }
    const auto separator = line.indexOf(u'=');
    if (separator < 0) {
        return false;
    }
    const auto value = valueOf(line.sliced(separator + 1));
    if (value) {
        sections[section].insert(line.first(separator).trimmed().toString(), *value);
    }
    return value.has_value();
}

} // namespace

std::expected<SettingsSections, QString> parseSettings(const QByteArray& text) {
    const auto whole = QString::fromUtf8(text);
    SettingsSections sections;
    auto section = QStringLiteral("General");
    for (const auto part : QStringView(whole).split(u'\n')) {
        const auto line = part.trimmed();
        if (!isRemark(line) && !read(line, section, sections)) {
            return std::unexpected(QStringLiteral("the settings file has a line that cannot be read"));
        }
    }
    return sections;
}

} // namespace brenvale
