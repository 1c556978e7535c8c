#include "theme/Desktop.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QIcon>
#include <QStyle>

#include <cmath>

namespace brenvale {

Desktop::Desktop(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            emit becameActive();
        }
    });
}

QString Desktop::fontFamily() {
    return QGuiApplication::font().family();
}

qreal Desktop::fontPixelSize() {
    return QFontInfo(QGuiApplication::font()).pixelSize();
}

QString Desktop::fixedFontFamily() {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

QString Desktop::iconThemeName() {
    return QIcon::themeName();
}

bool Desktop::isAnimated() {
    return QApplication::isEffectEnabled(Qt::UI_General) ||
           QApplication::style()->styleHint(QStyle::SH_Widget_Animate) != 0;
}

qreal Desktop::lineHeight(const QFont& font) {
    return std::ceil(QFontMetricsF(font).height());
}

void Desktop::tellText(QQuickItem* item, const QString& before, const QString& after) {
    const auto tell = [](QAccessibleEvent&& event) {
        QAccessible::updateAccessibility(&event);
    };
    if (after.startsWith(before)) {
        const auto place = static_cast<int>(before.size());
        tell(QAccessibleTextInsertEvent(item, place, after.sliced(place)));
    } else if (before.startsWith(after)) {
        const auto place = static_cast<int>(after.size());
        tell(QAccessibleTextRemoveEvent(item, place, before.sliced(place)));
    } else {
        tell(QAccessibleTextUpdateEvent(item, 0, before, after));
    }
}

bool Desktop::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == qApp && (type == QEvent::ApplicationFontChange || type == QEvent::StyleChange ||
                            type == QEvent::ThemeChange)) {
        emit changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace brenvale
