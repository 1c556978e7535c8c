#pragma once

class QQuickItem;

/// Scrolling and walking by keyboard, for `Keyboard`. All on main.
namespace brenvale {

/// Scrolls what `item` stands in so far that all of it shows.
void bringIntoSight(QQuickItem& item);

/// The page or list that a scrolling key means for `item`: the one that it stands in, or the nearest beside
/// it in `tab`; null where none has more than it shows.
[[nodiscard]] QQuickItem* scrollerFor(QQuickItem& item, const QQuickItem& tab);

/// What an arrow or a page key does to `scroller`; false for any other key.
bool scrollByKey(QQuickItem& scroller, int key);

/// The row of a list, one whose rows Tab goes through, that `item` stands in; null for none.
[[nodiscard]] QQuickItem* rowOf(QQuickItem* item);

/// Gives the keyboard to the control after `owner`, or before it, which stands in `row`. Rows come in their
/// order, also those that the list has not made yet.
void stepThroughRows(QQuickItem& owner, QQuickItem& row, bool isForward);

} // namespace brenvale
