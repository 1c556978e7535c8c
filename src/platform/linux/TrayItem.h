#pragma once

#include "platform/StatusItem.h"

#include <QHash>
#include <QMenu>
#include <QObject>

#include <memory>

class QSystemTrayIcon;

namespace brenvale {

class TrayWait;

/// The tray item as a StatusNotifierItem
/// (https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem) or, where the desktop has the older
/// kind of tray alone, embedded in that. A click of either button opens the menu. Made on main.
class TrayItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    TrayItem();
    ~TrayItem() override;

    void setMenu(std::vector<MenuItem> rows) override;
    void setTitle(int tag, const QString& title) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addRow(MenuItem row);
    void putUp();
    void drawIcon();

    std::unique_ptr<QMenu> menu_;
    QHash<int, QAction*> tagged_;
    std::unique_ptr<TrayWait> wait_;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

} // namespace brenvale
