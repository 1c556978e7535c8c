#pragma once

#include <QAbstractListModel>
#include <QList>

#include <algorithm>

namespace brenvale {

/// A list model that follows a list of records by inserting, removing and changing single rows, never by a
/// reset, so that a view keeps its place, its selection and its animations. Records keep their order from one
/// version of the list to the next, as they do in the store; rows are told apart by the record's `id`. On
/// main.
template <typename Record>
class RecordListModel : public QAbstractListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(records_.size());
    }

    [[nodiscard]] const QList<Record>& records() const { return records_; }

protected:
    /// Brings the rows to `next`.
    void setRecords(const QList<Record>& next) {
        removeRowsMissingFrom(next);
        for (int row = 0; row < next.size(); ++row) {
            if (row < records_.size() && records_[row].id == next[row].id) {
                changeRow(row, next[row]);
            } else {
                beginInsertRows({}, row, row);
                records_.insert(row, next[row]);
                endInsertRows();
            }
        }
        removeRange(static_cast<int>(next.size()), static_cast<int>(records_.size()));
    }

    /// Whether a view would show the two versions of one record differently.
    [[nodiscard]] virtual bool differ(const Record& /*shown*/, const Record& /*next*/) const { return false; }

private:
    void removeRowsMissingFrom(const QList<Record>& next) {
        const auto isMissing = [&next](const Record& record) {
            return std::ranges::none_of(next,
                                        [&record](const Record& other) { return other.id == record.id; });
        };
        for (int end = static_cast<int>(records_.size()); end > 0;) {
            int first = end;
            while (first > 0 && isMissing(records_[first - 1])) {
                --first;
            }
            removeRange(first, end);
            end = first - 1;
        }
    }

    void removeRange(int first, int end) {
        if (first < end) {
            beginRemoveRows({}, first, end - 1);
            records_.remove(first, end - first);
            endRemoveRows();
        }
    }

    void changeRow(int row, const Record& next) {
        const bool isChanged = differ(records_[row], next);
        records_[row] = next;
        if (isChanged) {
            emit dataChanged(index(row), index(row));
        }
    }

    QList<Record> records_;
};

} // namespace brenvale
