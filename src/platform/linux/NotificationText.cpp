#include "platform/linux/NotificationText.h"

namespace brenvale {

namespace {

/// Control characters are not allowed in markup, and a message with one of them would be shown raw or not at
/// all.
bool isShown(QChar character) {
    return character >= u' ' || character == u'\n' || character == u'\t';
}

QString shownText(const QString& text) {
    auto shown = text.left(longestNotificationText);
    if (!shown.isEmpty() && shown.size() < text.size()) {
        if (shown.back().isHighSurrogate()) {
            shown.chop(1);
        }
        shown += u'…';
    }
    shown.removeIf([](QChar character) { return !isShown(character); });
    return shown;
}

QString oneLine(QString text) {
    return text.replace(u'\n', u' ');
}

QString escaped(QString text) {
    return text.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"));
}

} // namespace

QString notificationSummary(const NotificationContent& content) {
    return oneLine(shownText(content.title));
}

QString notificationThread(const NotificationContent& content) {
    return oneLine(shownText(content.threadIdentifier));
}

QString notificationBody(const NotificationContent& content, bool hasMarkup) {
    auto subtitle = oneLine(shownText(content.subtitle));
    auto body = shownText(content.body);
    if (hasMarkup) {
        subtitle = subtitle.isEmpty() ? subtitle
                                      : QStringLiteral("<b>") + escaped(subtitle) + QStringLiteral("</b>");
        body = escaped(body);
    }
    return subtitle.isEmpty() || body.isEmpty() ? subtitle + body : subtitle + u'\n' + body;
}

} // namespace brenvale
