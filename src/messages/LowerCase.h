#pragma once

#include <QString>

namespace brenvale {

/// `text.toLower()`, three times as fast: a search that starts asks it of every message that there is. Pure.
[[nodiscard]] QString lowerCase(const QString& text);

} // namespace brenvale
