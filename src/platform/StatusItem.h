#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace brenvale {

/// One row of a menu.
struct MenuItem {
    QString title;
    QString keyEquivalent;        ///< a character, with Command; shown in the row, no shortcut elsewhere
    std::function<void()> action; ///< without one the row cannot be chosen
    int tag = 0;
    bool isSeparator = false;
};

/// The program's item in the desktop's tray with its menu. Where there is no tray nothing shows, and the item
/// appears as soon as one comes. On main.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Called once where the desktop has brought no tray some ten seconds after `setMenu`; one may come yet.
    /// Set before `setMenu`.
    std::function<void()> trayMissing;

    /// Puts the item up with `rows` as its menu. Called once.
    virtual void setMenu(std::vector<MenuItem> rows) = 0;

    /// Changes the title of the row with that tag; nothing happens where there is none.
    virtual void setTitle(int tag, const QString& title) = 0;
};

} // namespace brenvale
