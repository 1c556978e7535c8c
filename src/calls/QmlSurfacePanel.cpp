#include "calls/QmlSurfacePanel.h"

#include "theme/QmlSetup.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>

namespace brenvale {

QmlSurfacePanel::QmlSurfacePanel(const QString& view, QObject& banner, std::unique_ptr<PanelSurface> surface)
    : surface_(std::move(surface)) {
    build(view, banner);
    drawing_.setSingleShot(true);
    connect(&drawing_, &QTimer::timeout, this, &QmlSurfacePanel::draw);
    for (const auto changed : {&QQuickRenderControl::renderRequested, &QQuickRenderControl::sceneChanged}) {
        connect(control_.get(), changed, &drawing_, qOverload<>(&QTimer::start));
    }
    surface_->drawWanted = [this](int scale) {
        prepare(scale);
    };
    surface_->pointerMoved = [this](const QPointF& position) {
        pointerMoved(position);
    };
    surface_->buttonChanged = [this](bool isPressed) {
        buttonChanged(isPressed);
    };
    surface_->pointerLeft = [this] {
        pointerLeft();
    };
}

QmlSurfacePanel::~QmlSurfacePanel() {
    surface_.reset(); // before what it calls
    root_.reset();
}

void QmlSurfacePanel::build(const QString& view, QObject& banner) {
    useSoftwareRenderer(); // the only one that draws into memory
    control_ = std::make_unique<QQuickRenderControl>();
    window_ = std::make_unique<QQuickWindow>(control_.get());
    window_->setGeometry({{}, panelSize});
    window_->setColor(Qt::transparent);
    window_->setTitle(QStringLiteral("Brenvale Call"));
    engine_ = std::make_unique<QQmlEngine>();
    setUpEngine(*engine_);
    QQmlComponent component(engine_.get(),
                            QUrl(QStringLiteral("qrc:/qt/qml/Brenvale/calls/%1.qml").arg(view)));
    root_.reset(qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{QStringLiteral("banner"), QVariant::fromValue(&banner)}})));
    if (root_) {
        root_->setParentItem(window_->contentItem());
        root_->setSize(panelSize);
    }
}

void QmlSurfacePanel::orderFrontRegardless() {
    surface_->show();
    if (root_) {
        QAccessibleEvent shown(root_.get(), QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&shown);
    }
}

void QmlSurfacePanel::orderOut() {
    drawing_.stop();
    surface_->hide();
    picture_ = {};
}

void QmlSurfacePanel::prepare(int scale) {
    if (picture_.isNull() || qRound(picture_.devicePixelRatio()) != scale) {
        picture_ = QImage(panelSize * scale, QImage::Format_ARGB32_Premultiplied);
        picture_.setDevicePixelRatio(scale);
        picture_.fill(Qt::transparent);
        window_->setRenderTarget(QQuickRenderTarget::fromPaintDevice(&picture_));
    }
    draw();
}

void QmlSurfacePanel::draw() {
    if (picture_.isNull()) {
        return;
    }
    control_->polishItems();
    control_->sync();
    control_->render();
    surface_->present(picture_);
}

void QmlSurfacePanel::send(QEvent::Type type) {
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, pointer_, pointer_, button, buttons_, Qt::NoModifier);
    QCoreApplication::sendEvent(window_.get(), &event);
}

void QmlSurfacePanel::pointerMoved(const QPointF& position) {
    pointer_ = position;
    send(QEvent::MouseMove);
    if (held_ && root_ && root_->property("isHeld").toBool()) {
        surface_->moveBy((pointer_ - *held_).toPoint());
    }
}

void QmlSurfacePanel::buttonChanged(bool isPressed) {
    buttons_ = isPressed ? Qt::LeftButton : Qt::NoButton;
    held_ = isPressed ? std::optional(pointer_) : std::nullopt;
    send(isPressed ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease);
}

void QmlSurfacePanel::pointerLeft() {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(window_.get(), &event);
}

} // namespace brenvale
