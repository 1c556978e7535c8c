#pragma once

#include <QByteArray>
#include <QMap>
#include <QMultiMap>
#include <QString>

#include <expected>

namespace brenvale {

/// What is written in a settings file, by section: the values as text, by key, as often as they are there.
/// Sections and keys stand as they are written.
using SettingsSections = QMap<QString, QMultiMap<QString, QString>>;

/// Reads the text of a settings file: sections in brackets, a "key=value" a line, remarks behind ';' and in
/// lines that begin with '#'; what stands before the first section is of "General". A value may stand in
/// quotes, of which one that goes on in another line, as Qt has it, is refused like every other line that
/// can't be read: rules that stand in it would be missed. The error says so to people. Pure.
[[nodiscard]] std::expected<SettingsSections, QString> parseSettings(const QByteArray& text);

} // namespace brenvale
