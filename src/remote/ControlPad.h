#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace brenvale {

/// A button that presses a key of the phone. The view adds nothing but its look.
struct ControlPadButton {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString icon MEMBER icon CONSTANT)
    Q_PROPERTY(QString command MEMBER command CONSTANT)
    Q_PROPERTY(QString help MEMBER help CONSTANT)
    Q_PROPERTY(QString shortcut MEMBER shortcut CONSTANT)

public:
    QString title;    ///< empty where the icon stands alone
    QString name;     ///< what assistive technology calls it; empty where the title or the help does
    QString icon;     ///< a freedesktop icon name; empty for a filled circle
    QString command;  ///< as the phone knows it
    QString help;     ///< the tool tip
    QString shortcut; ///< a portable key sequence, or empty
};

/// A line of the table of shortcuts, which is text only.
struct ShortcutRow {
    QString key;
    QString description;
};

/// The buttons of the Remote tab by group, in the order in which they stand. Pure.
[[nodiscard]] const QList<ControlPadButton>& mediaButtons();
[[nodiscard]] const QList<ControlPadButton>& volumeButtons();

/// Up, left, centre, right, down.
[[nodiscard]] const QList<ControlPadButton>& dPadButtons();
[[nodiscard]] const QList<ControlPadButton>& coreButtons();
[[nodiscard]] const QList<ControlPadButton>& systemButtons();
[[nodiscard]] const QList<ShortcutRow>& shortcutRows();

} // namespace brenvale
