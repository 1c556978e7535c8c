#pragma once

#include "shell/MainWindow.h"

#include <QIcon>
#include <QObject>
#include <QRect>

#include <memory>

class QQuickView;
class QWindow;

namespace brenvale {

/// The main window in Qt Quick. Its views exist while it is on show; `SettingsView` keeps what they showed.
/// On main.
class QmlMainWindow final : public QObject, public MainWindow {
    Q_OBJECT

public:
    /// `settings` is a `SettingsView`, or what stands for one in a test, and must outlive the window.
    explicit QmlMainWindow(QObject& settings);
    ~QmlMainWindow() override;
    QmlMainWindow(const QmlMainWindow&) = delete;
    QmlMainWindow& operator=(const QmlMainWindow&) = delete;

    [[nodiscard]] bool isVisible() const override;
    void makeKeyAndOrderFront() override;

    /// Brings a window to the front because the user asked for it; what the desktop needs for that. Without
    /// one the toolkit asks the desktop, which may refuse.
    std::function<void(QWindow& window)> activate;

    /// Null while it is not on show.
    [[nodiscard]] QQuickView* view() const { return view_.get(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildView();
    void releaseView();
    void rememberGeometry();

    QObject& settings_;
    std::unique_ptr<QQuickView> view_;
    QIcon icon_;     ///< null before the first time
    QRect geometry_; ///< the last one that it had while it was not maximised; null before the first time
    bool isMaximised_ = false; ///< when it was closed
};

} // namespace brenvale
