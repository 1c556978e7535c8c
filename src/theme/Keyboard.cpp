#include "theme/Keyboard.h"

#include "theme/KeyboardScrolling.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QtQml/qqml.h>

#include <algorithm>
#include <utility>

namespace brenvale {

namespace {

bool isUsable(const QQuickItem* item) {
    return item != nullptr && item->isVisible() && item->isEnabled();
}

/// Whether the pointer gave the item the keyboard, as far as it tells.
bool cameByPointer(const QQuickItem& item) {
    const auto reason = item.property("focusReason");
    return reason.isValid() && reason.toInt() == Qt::MouseFocusReason;
}

KeyboardPlace* placeOf(QObject* item) {
    return item == nullptr ? nullptr
                           : qobject_cast<KeyboardPlace*>(qmlAttachedPropertiesObject<Keyboard>(item, false));
}

bool isTextToEdit(const QQuickItem* item) {
    return item != nullptr && (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit")) &&
           !item->property("readOnly").toBool();
}

/// Whether it is the second or a later press of a key that acts once however long it is held.
bool isRepeatedPress(const QKeyEvent& event, const QQuickItem* owner) {
    const auto key = event.key();
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    return event.isAutoRepeat() && (isReturn || (key == Qt::Key_Space && !isTextToEdit(owner)));
}

bool isTab(const QKeyEvent& event) {
    const bool isPlain = (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    return isPlain && (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab);
}

} // namespace

void KeyboardPlace::setHome(QQuickItem* home) {
    if (home != home_) {
        home_ = home;
        emit changed();
    }
}

void KeyboardPlace::goHome() {
    if (isUsable(home_)) {
        home_->forceActiveFocus(Qt::OtherFocusReason);
    }
}

void Keyboard::setTab(QQuickItem* tab) {
    if (tab == tab_) {
        return;
    }
    const QPointer before = std::exchange(tab_, tab);
    emit tabChanged();
    auto* place = placeOf(tab);
    if (place == nullptr) {
        return;
    }
    // Whoever walks through the tabs by keyboard stays there.
    const auto* owner = window() == nullptr ? nullptr : window()->activeFocusItem();
    const bool isTaken = isUsable(owner) && isOutsideTab() && !isNobody(*owner) &&
                         !(before != nullptr && (owner == before || before->isAncestorOf(owner)));
    if (!isTaken || (place->isEager && cameByPointer(*owner))) {
        place->goHome();
    }
}

void Keyboard::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) {
        if (watched_ != nullptr) {
            watched_->removeEventFilter(this);
            watched_->disconnect(this);
        }
        watched_ = data.window;
        if (watched_ != nullptr) {
            watched_->installEventFilter(this);
            connect(watched_, &QQuickWindow::activeFocusItemChanged, this, &Keyboard::ownerChanged);
        }
    }
    QQuickItem::itemChange(change, data);
}

void Keyboard::ownerChanged() {
    auto* next = watched_->activeFocusItem();
    const auto* before = path_.empty() ? nullptr : path_.front().data();
    if (!path_.empty() && !isUsable(before)) {
        // What it stood in has the keyboard by default; whatever else has it was given it.
        const bool isDefault = next == nullptr || isNobody(*next) ||
                               std::ranges::any_of(path_, [next](const auto& item) { return item == next; });
        if (isDefault) {
            recoverIfGone();
            return;
        }
    }
    if (next != nullptr && !isNobody(*next)) {
        adopt(*next);
    }
}

void Keyboard::adopt(QQuickItem& owner) {
    if (!path_.empty() && path_.front() != nullptr) {
        path_.front()->disconnect(this);
    }
    path_.clear();
    for (auto* item = &owner; item != nullptr; item = item->parentItem()) {
        path_.emplace_back(item);
    }
    connect(&owner, &QObject::destroyed, this, &Keyboard::recoverIfGone);
    connect(&owner, &QQuickItem::visibleChanged, this, &Keyboard::recoverIfGone);
    connect(&owner, &QQuickItem::enabledChanged, this, &Keyboard::recoverIfGone);
    cameByPointer_ = cameByPointer(owner);
    if (!cameByPointer_) { // what is pointed at stays where it is
        bringIntoSight(owner);
    }
}

void Keyboard::recoverIfGone() {
    if (isRecovering_ || path_.empty() || isUsable(path_.front())) {
        return;
    }
    isRecovering_ = true;
    // It may be on its way out: what is left of it shows in the next step of the event loop.
    QMetaObject::invokeMethod(
        this,
        [this] {
            isRecovering_ = false;
            if (path_.empty() || isUsable(path_.front())) {
                return;
            }
            const auto path = std::exchange(path_, {});
            const auto reason = cameByPointer_ ? Qt::OtherFocusReason : Qt::TabFocusReason;
            for (const auto& item : path) {
                if (const auto* place = placeOf(item); place != nullptr && isUsable(place->home())) {
                    place->home()->forceActiveFocus(reason);
                    return;
                }
            }
            if (const auto* place = placeOf(tab_); place != nullptr && isUsable(place->home())) {
                place->home()->forceActiveFocus(Qt::OtherFocusReason);
            }
        },
        Qt::QueuedConnection);
}

bool Keyboard::isNobody(const QQuickItem& owner) const {
    return owner.isAncestorOf(this) || (tab_ != nullptr && owner.isAncestorOf(tab_));
}

bool Keyboard::isOutsideTab() const {
    const auto* owner = watched_ != nullptr ? watched_->activeFocusItem() : nullptr;
    return owner == nullptr || tab_ == nullptr || (owner != tab_ && !tab_->isAncestorOf(owner));
}

bool Keyboard::passToTab(int key, int modifiers, const QString& text) {
    const auto* place = placeOf(tab_);
    if (place == nullptr || !isUsable(place->home()) || !isOutsideTab()) {
        return false;
    }
    QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text);
    for (auto* item = place->home(); item != nullptr && item != tab_->parentItem();
         item = item->parentItem()) {
        event.accept();
        QCoreApplication::sendEvent(item, &event);
        if (event.isAccepted()) {
            place->home()->forceActiveFocus(Qt::OtherFocusReason); // who begins to type goes on there
            return true;
        }
    }
    return false;
}

bool Keyboard::takeUnwanted(int key, int modifiers, const QString& text) {
    // A text alone says that the user is typing; Return and Space press what has the keyboard.
    const bool isTyping =
        !text.isEmpty() && key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space;
    if (isTyping && passToTab(key, modifiers, text)) {
        return true;
    }
    auto* owner = isOutsideTab() ? tab_.data() : watched_->activeFocusItem();
    auto* scroller = owner == nullptr || tab_ == nullptr || modifiers != Qt::NoModifier
                         ? nullptr
                         : scrollerFor(*owner, *tab_);
    return scroller != nullptr && scrollByKey(*scroller, key);
}

bool Keyboard::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched != watched_ || (type != QEvent::KeyPress && type != QEvent::KeyRelease)) {
        return QQuickItem::eventFilter(watched, event);
    }
    auto* owner = watched_->activeFocusItem();
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (isRepeatedPress(key, owner)) {
        return true;
    }
    if (type == QEvent::KeyPress && isTab(key)) {
        if (auto* row = rowOf(owner)) {
            stepThroughRows(*owner, *row,
                            key.key() == Qt::Key_Tab && !key.modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return false;
}

} // namespace brenvale
