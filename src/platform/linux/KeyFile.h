#pragma once

#include <QByteArray>

#include <optional>

namespace brenvale {

/// The value of `key` in the group whose head line is `group` ("[Desktop Entry]"), in a file of the form that
/// desktop entries and the settings of KDE share; nothing where it is not there. An option behind the key
/// ("[$i]") is passed over. Pure.
[[nodiscard]] std::optional<QByteArray> keyFileValue(const QByteArray& text, const QByteArray& group,
                                                     const QByteArray& key);

} // namespace brenvale
