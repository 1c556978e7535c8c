#include "calls/QmlCallPanel.h"

#include "theme/QmlSetup.h"
#include "theme/ScreenPlaces.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>

#include <utility>

namespace brenvale {

QmlCallPanel::QmlCallPanel(const QString& view, QObject& banner, Floating floating)
    : floating_(std::move(floating)) {
    chooseQuickRenderer();
    view_ = std::make_unique<QQuickView>();
    setUpEngine(*view_->engine());
    if (floating_.prepare) {
        floating_.prepare(*view_);
    }
    if (floating_.isTranslucent) {
        view_->setColor(Qt::transparent);
    }
    view_->setTitle(QStringLiteral("Brenvale Call"));
    view_->setMinimumSize(panelSize);
    view_->setMaximumSize(panelSize);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{QStringLiteral("banner"), QVariant::fromValue(&banner)},
                                 {QStringLiteral("isTranslucent"), floating_.isTranslucent}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Brenvale/calls/%1.qml").arg(view)));
    view_->installEventFilter(this);
    moveToItsPlace();
    followScreens();
}

QmlCallPanel::~QmlCallPanel() = default;

void QmlCallPanel::moveToItsPlace() {
    QRect frame({}, panelSize);
    if (const auto* screen = QGuiApplication::primaryScreen()) {
        const auto area = floating_.usableArea ? floating_.usableArea(*screen) : screen->availableGeometry();
        frame.moveTo(area.x() + area.width() - panelMargin - panelSize.width(), area.y() + panelMargin);
    }
    view_->setGeometry(frame);
}

/// Screens come, go and change their sizes while the panel is on show.
void QmlCallPanel::followScreens() {
    const auto follow = [this](QScreen* screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, &QmlCallPanel::screensChanged,
                Qt::QueuedConnection);
    };
    for (auto* screen : QGuiApplication::screens()) {
        follow(screen);
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QmlCallPanel::screensChanged,
            Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QmlCallPanel::screensChanged,
            Qt::QueuedConnection);
}

/// Where the user dragged it to it stays, unless that place is gone.
void QmlCallPanel::screensChanged() {
    if (!wasDragged_ || !isOnAScreen(view_->geometry().center())) {
        wasDragged_ = false;
        moveToItsPlace();
    }
}

void QmlCallPanel::orderFrontRegardless() {
    const bool isNew = !view_->isVisible();
    view_->show();
    view_->raise();
    if (isNew && view_->rootObject() != nullptr) {
        // Nothing else tells a screen reader: the panel never gets the focus.
        QAccessibleEvent shown(view_->rootObject(), QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&shown);
        QAccessibleEvent alert(view_->rootObject(), QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void QmlCallPanel::orderOut() {
    view_->hide();
}

bool QmlCallPanel::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        drag_ = {.window = view_->position(),
                 .pointer = static_cast<const QMouseEvent*>(event)->globalPosition()};
        break;
    case QEvent::MouseMove:
        drag(*static_cast<const QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        drag_.reset();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// No window manager moves a window that floats.
void QmlCallPanel::drag(const QMouseEvent& event) {
    const auto* root = view_->rootObject();
    if (drag_ && root != nullptr && root->property("isHeld").toBool()) {
        wasDragged_ = true;
        view_->setPosition(drag_->window + (event.globalPosition() - drag_->pointer).toPoint());
    }
}

} // namespace brenvale
