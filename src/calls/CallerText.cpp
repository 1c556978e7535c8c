#include "calls/CallerText.h"

namespace brenvale {

namespace {

bool counts(const QString& trimmed) {
    return !trimmed.isEmpty() && trimmed.toLower() != u"unknown";
}

} // namespace

CallerText incomingCallerText(const IncomingCallInfo& info) {
    const auto name = info.name.value_or(QString()).trimmed();
    const auto number = info.number.trimmed();
    if (!counts(name)) {
        return {.firstLine = counts(number) ? number : QStringLiteral("Unknown Caller"), .secondLine = {}};
    }
    return {.firstLine = name, .secondLine = counts(number) && number != name ? number : QString()};
}

CallerText activeCallerText(const QString& name, const QString& number) {
    if (name.isEmpty()) {
        return {.firstLine = number, .secondLine = {}};
    }
    return {.firstLine = name, .secondLine = name != number ? number : QString()};
}

QString formatDuration(qint64 seconds) {
    constexpr qint64 secondsOfAMinute = 60;
    constexpr int digits = 2;
    constexpr int decimal = 10;
    return QStringLiteral("%1:%2")
        .arg(seconds / secondsOfAMinute, digits, decimal, QChar(u'0'))
        .arg(seconds % secondsOfAMinute, digits, decimal, QChar(u'0'));
}

} // namespace brenvale
