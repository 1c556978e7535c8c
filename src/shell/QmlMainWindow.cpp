#include "shell/QmlMainWindow.h"

#include "theme/QmlSetup.h"
#include "theme/ScreenPlaces.h"

#include <QCloseEvent>
#include <QQuickView>
#include <QScreen>

#include <malloc.h>

namespace brenvale {

namespace {

constexpr QSize initialSize(850, 550);
constexpr QSize minimumSize(800, 500);

QRect centredOn(const QScreen& screen) {
    QRect frame({}, initialSize);
    frame.moveCenter(screen.availableGeometry().center());
    return frame;
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
    const auto frame = view_->geometry();
    if (!isOnAScreen({frame.center().x(), frame.top()})) {
        view_->setGeometry(centredOn(*view_->screen()));
    }
    view_->show();
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
    view_->setGeometry(geometry_.isNull() ? centredOn(*view_->screen()) : geometry_);
    view_->setInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&settings_)}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Brenvale/shell/MainView.qml")));
    view_->installEventFilter(this);
}

bool QmlMainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_.get() && event->type() == QEvent::Close) {
        geometry_ = view_->geometry();
        // The view is on the stack: it goes when the event is done with.
        QMetaObject::invokeMethod(this, &QmlMainWindow::releaseView, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
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
