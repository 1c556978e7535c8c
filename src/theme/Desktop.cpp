#include "theme/Desktop.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QIcon>
#include <QStyle>

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

bool Desktop::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == qApp && (type == QEvent::ApplicationFontChange || type == QEvent::StyleChange ||
                            type == QEvent::ThemeChange)) {
        emit changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace brenvale
