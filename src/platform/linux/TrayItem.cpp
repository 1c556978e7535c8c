#include "platform/linux/TrayItem.h"

#include "platform/linux/StatusIcon.h"
#include "platform/linux/TrayColor.h"
#include "platform/linux/TrayWait.h"

#include <QApplication>
#include <QEvent>
#include <QSystemTrayIcon>

namespace brenvale {

TrayItem::TrayItem() = default;
TrayItem::~TrayItem() = default;

void TrayItem::setMenu(std::vector<MenuItem> rows) {
    menu_ = std::make_unique<QMenu>();
    for (auto& row : rows) {
        addRow(std::move(row));
    }
    wait_ = std::make_unique<TrayWait>([this] { putUp(); },
                                       [this] {
                                           if (trayMissing) {
                                               trayMissing();
                                           }
                                       });
}

void TrayItem::addRow(MenuItem row) {
    if (row.isSeparator) {
        menu_->addSeparator();
        return;
    }
    auto* action = menu_->addAction(row.title);
    if (!row.keyEquivalent.isEmpty()) {
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+") + row.keyEquivalent.toUpper()));
        action->setShortcutContext(Qt::WidgetShortcut); // the menu's own: it is only shown
    }
    action->setEnabled(static_cast<bool>(row.action));
    if (row.action) {
        connect(action, &QAction::triggered, this, std::move(row.action));
    }
    if (row.tag != 0) {
        tagged_.insert(row.tag, action);
    }
}

void TrayItem::setTitle(int tag, const QString& title) {
    if (auto* action = tagged_.value(tag)) {
        action->setText(title);
    }
}

void TrayItem::putUp() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setToolTip(QStringLiteral("Brenvale"));
    icon_->setContextMenu(menu_.get());
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            menu_->popup(QCursor::pos());
        }
    });
    drawIcon();
    qApp->installEventFilter(this);
    icon_->show();
}

void TrayItem::drawIcon() {
    icon_->setIcon(statusIcon(trayColor()));
}

bool TrayItem::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) {
        drawIcon(); // with the applications the panel may have changed its colours
    }
    return false;
}

} // namespace brenvale
