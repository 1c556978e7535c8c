#pragma once

#include <QAbstractListModel>

namespace brenvale {

/// A list model whose number of rows a view can bind to.
class CountedListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    [[nodiscard]] int count() const { return rowCount(); }

signals:
    /// After the rows, and only where their number is another than before.
    void countChanged();
};

} // namespace brenvale
