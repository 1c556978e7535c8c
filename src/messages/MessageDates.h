#pragma once

#include <QDateTime>
#include <QString>

namespace brenvale {

/// The clock time of so many milliseconds after 1970, whatever the day; in the user's locale. Pure.
[[nodiscard]] QString formatDate(double milliseconds);

/// The clock time if that instant lies on the day of `now`, "Yesterday" if on the day before, else the short
/// date. Pure.
[[nodiscard]] QString formatRelativeDate(double milliseconds, const QDateTime& now);

} // namespace brenvale
