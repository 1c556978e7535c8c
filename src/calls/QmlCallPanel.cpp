#include "calls/QmlCallPanel.h"

#include "theme/QmlSetup.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>

#include <algorithm>

namespace brenvale {

namespace {

constexpr QSize panelSize(350, 80);
constexpr int margin = 20;

} // namespace

QmlCallPanel::QmlCallPanel(const QString& view, QObject& banner, const Floating& floating) {
    chooseQuickRenderer();
    view_ = std::make_unique<QQuickView>();
    setUpEngine(*view_->engine());
    if (floating.prepare) {
        floating.prepare(*view_);
    }
    if (floating.isTranslucent) {
        view_->setColor(Qt::transparent);
    }
    view_->setTitle(QStringLiteral("Brenvale Call"));
    view_->setMinimumSize(panelSize);
    view_->setMaximumSize(panelSize);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{QStringLiteral("banner"), QVariant::fromValue(&banner)},
                                 {QStringLiteral("isTranslucent"), floating.isTranslucent}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Brenvale/calls/%1.qml").arg(view)));
    view_->installEventFilter(this);
    moveToItsPlace();
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QmlCallPanel::moveIntoSight,
            Qt::QueuedConnection);
}

QmlCallPanel::~QmlCallPanel() = default;

void QmlCallPanel::moveToItsPlace() {
    QRect frame({}, panelSize);
    if (const auto* screen = QGuiApplication::primaryScreen()) {
        const auto area = screen->availableGeometry();
        frame.moveTo(area.x() + area.width() - margin - panelSize.width(), area.y() + margin);
    }
    view_->setGeometry(frame);
}

/// The screen that the user dragged it to may be unplugged.
void QmlCallPanel::moveIntoSight() {
    const auto centre = view_->geometry().center();
    const auto screens = QGuiApplication::screens();
    if (std::ranges::none_of(screens,
                             [&centre](auto* screen) { return screen->geometry().contains(centre); })) {
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
        view_->setPosition(drag_->window + (event.globalPosition() - drag_->pointer).toPoint());
    }
}

} // namespace brenvale
