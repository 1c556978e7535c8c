#include "shell/QmlMainWindow.h"

#include "theme/QmlSetup.h"
#include "theme/ScreenPlaces.h"

#include <QCloseEvent>
#include <QQuickView>
#include <QScreen>

#include <malloc.h>

#include <utility>

namespace brenvale {

namespace {

constexpr QSize initialSize(850, 550);
constexpr QSize minimumSize(800, 500);

/// In the middle of the screen, as large as it was before if it was anything.
QRect centredOn(const QScreen& screen, const QSize& sizeBefore) {
    const auto room = screen.availableGeometry();
    QRect frame({}, sizeBefore.isEmpty() ? initialSize
                                         : sizeBefore.boundedTo(room.size()).expandedTo(minimumSize));
    frame.moveCenter(room.center());
    return frame;
}

/// Whether its title bar can be held.
bool isInSight(const QRect& frame) {
    return isOnAScreen({frame.center().x(), frame.top()});
}

} // namespace

QmlMainWindow::QmlMainWindow(QObject& settings) : settings_(settings) {}

QmlMainWindow::~QmlMainWindow() = default;

bool QmlMainWindow::isVisible() const {
    return view_ != nullptr && view_->isVisible() && !view_->windowStates().testFlag(Qt::WindowMinimized);
}

void QmlMainWindow::makeKeyAndOrderFront() {
    if (view_ == nullptr) {
        buildView();
    }
    if (view_->windowStates().testFlag(Qt::WindowMinimized)) {
        view_->setWindowStates(view_->windowStates() & ~Qt::WindowMinimized);
    }
    // The screen that it was on may be gone, and its title bar with it.
    if (const auto frame = view_->geometry(); !isInSight(frame)) {
        view_->setGeometry(centredOn(*view_->screen(), frame.size()));
    }
    if (std::exchange(isMaximised_, false)) {
        view_->showMaximized();
    } else {
        view_->show();
    }
    if (activate) {
        activate(*view_);
    } else {
        view_->raise();
        view_->requestActivate();
    }
}

void QmlMainWindow::buildView() {
    chooseQuickRenderer();
    view_ = std::make_unique<QQuickView>();
    setUpEngine(*view_->engine());
    view_->setTitle(QStringLiteral("Brenvale Settings"));
    if (icon_.isNull()) { // made once: the toolkit keeps the pictures of each icon that ever was
        icon_ = QIcon(QStringLiteral(":/org.brenvale.Brenvale.svg"));
    }
    view_->setIcon(icon_);
    view_->setMinimumSize(minimumSize);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setGeometry(!geometry_.isNull() && isInSight(geometry_)
                           ? geometry_
                           : centredOn(*view_->screen(), geometry_.size()));
    view_->setInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&settings_)}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Brenvale/shell/MainView.qml")));
    view_->installEventFilter(this);
}

bool QmlMainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_.get() && event->type() == QEvent::Close) {
        rememberGeometry();
        isMaximised_ = view_->windowStates().testFlag(Qt::WindowMaximized);
        // The view is on the stack: it goes when the event is done with.
        QMetaObject::invokeMethod(this, &QmlMainWindow::releaseView, Qt::QueuedConnection);
    }
    if (watched == view_.get() && (event->type() == QEvent::Resize || event->type() == QEvent::Move)) {
        // The desktop may tell the size of a maximised window before it tells that it is one.
        QMetaObject::invokeMethod(this, &QmlMainWindow::rememberGeometry, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void QmlMainWindow::rememberGeometry() {
    constexpr auto filling = Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized;
    if (view_ != nullptr && view_->isVisible() && (view_->windowStates() & filling) == Qt::WindowStates()) {
        geometry_ = view_->geometry();
    }
}

void QmlMainWindow::releaseView() {
    if (view_ == nullptr || view_->isVisible()) { // shown again meanwhile
        return;
    }
    view_.reset();
    malloc_trim(0);
    if (windowWillClose) {
        windowWillClose();
    }
}

} // namespace brenvale
