#pragma once

#include <QDateTime>

namespace brenvale {

/// The instant so many milliseconds after 1970, in local time. A phone may send any number; what no calendar
/// holds becomes the nearest instant that one does. Pure.
[[nodiscard]] QDateTime instantOf(double milliseconds);

/// Date, with the month in short, and time to the minute; in the user's locale. Pure.
[[nodiscard]] QString abbreviatedDateAndTime(const QDateTime& instant);

} // namespace brenvale
