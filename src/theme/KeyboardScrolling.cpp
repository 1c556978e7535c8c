#include "theme/KeyboardScrolling.h"

#include <QQuickItem>

#include <algorithm>

namespace brenvale {

namespace {

constexpr double sightMargin = 16;
constexpr double arrowStep = 48;
constexpr double pageShare = 0.9; ///< some lines of what was seen stay in sight

/// The modes of a list's `positionViewAtIndex`, which have no public header.
constexpr int containMode = 4;

bool isFlickable(const QQuickItem& item) {
    return item.inherits("QQuickFlickable");
}

double number(const QQuickItem& item, const char* name) {
    return item.property(name).toDouble();
}

bool hasMoreThanItShows(const QQuickItem& flickable) {
    const auto margins = number(flickable, "topMargin") + number(flickable, "bottomMargin");
    return number(flickable, "contentHeight") + margins > flickable.height() + 0.5;
}

/// Where `contentY` may be at the top and at the end.
double top(const QQuickItem& flickable) {
    return number(flickable, "originY") - number(flickable, "topMargin");
}

double end(const QQuickItem& flickable) {
    return std::max(top(flickable), number(flickable, "originY") + number(flickable, "contentHeight") +
                                        number(flickable, "bottomMargin") - flickable.height());
}

void scrollTo(QQuickItem& flickable, double place) {
    flickable.setProperty("contentY", std::clamp(place, top(flickable), end(flickable)));
}

/// A list guesses how long it is until the rows there are made.
void goToFarEnd(QQuickItem& flickable, const char* operation) {
    if (flickable.inherits("QQuickListView")) {
        QMetaObject::invokeMethod(&flickable, operation);
    }
}

void bringIntoSight(QQuickItem& item, QQuickItem& flickable) {
    auto* content = flickable.property("contentItem").value<QQuickItem*>();
    const auto itemTop = item.mapToItem(content, QPointF()).y() - sightMargin;
    const auto itemEnd = itemTop + item.height() + (2 * sightMargin);
    const auto place = number(flickable, "contentY");
    if (itemTop < place) {
        scrollTo(flickable, itemTop);
    } else if (itemEnd > place + flickable.height()) {
        scrollTo(flickable, std::min(itemTop, itemEnd - flickable.height()));
    }
}

QQuickItem* scrollableIn(QQuickItem& place) {
    if (!place.isVisible()) {
        return nullptr;
    }
    if (isFlickable(place) && hasMoreThanItShows(place)) {
        return &place;
    }
    for (auto* child : place.childItems()) {
        if (auto* found = scrollableIn(*child)) {
            return found;
        }
    }
    return nullptr;
}

QQuickItem* listOf(const QQuickItem& row) {
    auto* content = row.parentItem();
    auto* list = content == nullptr ? nullptr : content->parentItem();
    return list != nullptr && list->inherits("QQuickListView") ? list : nullptr;
}

QQuickItem* madeRow(QQuickItem& list, int index) {
    QQuickItem* row = nullptr;
    QMetaObject::invokeMethod(&list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, row), Q_ARG(int, index));
    return row;
}

/// The row at `index`, made and in sight.
QQuickItem* rowInSight(QQuickItem& list, int index) {
    if (auto* row = madeRow(list, index)) {
        return row;
    }
    QMetaObject::invokeMethod(&list, "positionViewAtIndex", Q_ARG(int, index), Q_ARG(int, containMode));
    return madeRow(list, index);
}

/// The first control in a row, or the last.
QQuickItem* controlIn(QQuickItem& row, bool isFirst) {
    QQuickItem* control = nullptr;
    for (auto* item = row.nextItemInFocusChain(); item != nullptr && rowOf(item) == &row && item != control;
         item = item->nextItemInFocusChain()) {
        control = item;
        if (isFirst) {
            break;
        }
    }
    return control;
}

/// Of the nearest row after `row`, or before it, that has one.
QQuickItem* controlOfNeighbour(QQuickItem& list, const QQuickItem& row, bool isForward) {
    const int count = list.property("count").toInt();
    const int step = isForward ? 1 : -1;
    for (int index = row.property("index").toInt() + step; index >= 0 && index < count; index += step) {
        auto* neighbour = rowInSight(list, index);
        if (auto* control = neighbour == nullptr ? nullptr : controlIn(*neighbour, isForward)) {
            return control;
        }
    }
    return nullptr;
}

} // namespace

void bringIntoSight(QQuickItem& item) {
    for (auto* parent = item.parentItem(); parent != nullptr; parent = parent->parentItem()) {
        if (isFlickable(*parent)) {
            bringIntoSight(item, *parent);
        }
    }
}

QQuickItem* scrollerFor(QQuickItem& item, const QQuickItem& tab) {
    for (auto* place = &item; place != nullptr && place != tab.parentItem(); place = place->parentItem()) {
        if (auto* scroller = scrollableIn(*place)) {
            return scroller;
        }
    }
    return nullptr;
}

bool scrollByKey(QQuickItem& scroller, int key) {
    const auto place = number(scroller, "contentY");
    const auto page = scroller.height() * pageShare;
    switch (key) {
    case Qt::Key_Up:
        scrollTo(scroller, place - arrowStep);
        return true;
    case Qt::Key_Down:
        scrollTo(scroller, place + arrowStep);
        return true;
    case Qt::Key_PageUp:
        scrollTo(scroller, place - page);
        return true;
    case Qt::Key_PageDown:
        scrollTo(scroller, place + page);
        return true;
    case Qt::Key_Home:
        goToFarEnd(scroller, "positionViewAtBeginning");
        scrollTo(scroller, top(scroller));
        return true;
    case Qt::Key_End:
        goToFarEnd(scroller, "positionViewAtEnd");
        scrollTo(scroller, end(scroller));
        return true;
    default:
        return false;
    }
}

QQuickItem* rowOf(QQuickItem* item) {
    for (; item != nullptr; item = item->parentItem()) {
        if (const auto* list = listOf(*item); list != nullptr) {
            return list->activeFocusOnTab() ? nullptr
                                            : item; // such a list is walked through by its arrow keys
        }
    }
    return nullptr;
}

void stepThroughRows(QQuickItem& owner, QQuickItem& row, bool isForward) {
    auto* next = owner.nextItemInFocusChain(isForward);
    if (rowOf(next) != &row) {
        auto& list = *listOf(row);
        if (auto* control = controlOfNeighbour(list, row, isForward)) {
            next = control;
        } else {
            // What follows in the window.
            while (next != nullptr && next != &owner && list.isAncestorOf(next)) {
                next = next->nextItemInFocusChain(isForward);
            }
        }
    }
    if (next != nullptr) {
        next->forceActiveFocus(isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
}

} // namespace brenvale
