#pragma once

#include <QPointer>
#include <QQuickItem>

#include <vector>

namespace brenvale {

/// What an item declares of the keyboard, as `Keyboard.home`, for itself and what stands in it. On main.
class KeyboardPlace : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QQuickItem* home READ home WRITE setHome NOTIFY changed)
    Q_PROPERTY(bool isEager MEMBER isEager NOTIFY changed)

public:
    using QObject::QObject;

    /// Has the keyboard when a tab shows, and gets it back when what has it in this place goes away, hides or
    /// is disabled.
    [[nodiscard]] QQuickItem* home() const { return home_; }
    void setHome(QQuickItem* home);

    /// Gives home the keyboard: the user went there.
    Q_INVOKABLE void goHome();

    /// The home of a tab has the keyboard even where a click elsewhere in the window showed the tab.
    bool isEager = false;

signals:
    void changed();

private:
    QPointer<QQuickItem> home_;
};

/// The one owner of the keyboard in a window. It gives the keyboard to the home of the tab on show, gives it
/// back when its owner is gone, keeps the owner in sight, leads Tab through the rows of a list in their
/// order, scrolls by the keys that nothing else wants, and lets a key that is held press once. On main.
class Keyboard : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    QML_ATTACHED(brenvale::KeyboardPlace)
    Q_PROPERTY(QQuickItem* tab READ tab WRITE setTab NOTIFY tabChanged)

public:
    using QQuickItem::QQuickItem;

    static KeyboardPlace* qmlAttachedProperties(QObject* object) { return new KeyboardPlace(object); }

    [[nodiscard]] QQuickItem* tab() const { return tab_; }
    void setTab(QQuickItem* tab);

    /// Takes a key that nothing in the window wanted: it goes to the tab where its owner is outside of that,
    /// and scrolls. False where it is not wanted here either.
    Q_INVOKABLE bool takeUnwanted(int key, int modifiers, const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void tabChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void ownerChanged();
    void adopt(QQuickItem& owner);
    void recoverIfGone();
    [[nodiscard]] bool passToTab(int key, int modifiers, const QString& text);
    [[nodiscard]] bool isOutsideTab() const;

    /// What the tab and this stand in has the keyboard where nothing in it has.
    [[nodiscard]] bool isNobody(const QQuickItem& owner) const;

    QPointer<QQuickItem> tab_;
    QPointer<QQuickWindow> watched_;

    /// Who has the keyboard and what that stands in, from the inside out; the first is null once it is gone.
    std::vector<QPointer<QQuickItem>> path_;
    bool cameByPointer_ = false;
    bool isRecovering_ = false;
};

} // namespace brenvale
