#pragma once

#include "records/CountedListModel.h"

#include <QHash>
#include <QList>

#include <algorithm>
#include <vector>

namespace brenvale {

/// What tells a record from the others of its list.
template <typename Record>
[[nodiscard]] auto identityOf(const Record& record) {
    if constexpr (requires { record.id(); }) {
        return record.id();
    } else {
        return record.id;
    }
}

/// A list model that follows a list of records by inserting, removing and changing rows, so that a view keeps
/// its place, its selection and its animations. Rows are told apart by the record's identity; rows that share
/// one stand side by side. A record that changes its place leaves and comes back. Where little of the list is
/// left as it was, the model is reset, which costs a view less. On main.
template <typename Record>
class RecordListModel : public CountedListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(records_.size());
    }

    [[nodiscard]] const QList<Record>& records() const { return records_; }

protected:
    /// Brings the rows to `next`.
    void setRecords(const QList<Record>& next) {
        const auto countBefore = records_.size();
        const auto places = placesIn(next);
        if (numberOfRuns(places, next.size()) > mostRuns) {
            reset(next);
        } else {
            removeGone(places);
            const auto kept = keptIn(next, places);
            insertMissing(next, kept);
            changeKept(next, kept);
        }
        tellCount(countBefore);
    }

    /// Shows `next` as a list that has nothing to do with the one before.
    void resetRecords(const QList<Record>& next) {
        const auto countBefore = records_.size();
        reset(next);
        tellCount(countBefore);
    }

    /// Tells views that what they show in `roles` of all rows may have changed.
    void refreshRoles(const QList<int>& roles) {
        if (!records_.isEmpty()) {
            emit dataChanged(index(0), index(rowCount() - 1), roles);
        }
    }

    /// Whether a view would show the two versions of one record differently.
    [[nodiscard]] virtual bool differ(const Record& /*shown*/, const Record& /*next*/) const { return false; }

private:
    /// Beyond this many separate insertions and removals a reset is cheaper.
    static constexpr int mostRuns = 128;
    static constexpr int gone = -1;

    /// The place of each row in `next`, in ascending order; `gone` for a row that has to go.
    [[nodiscard]] std::vector<int> placesIn(const QList<Record>& next) const {
        QHash<decltype(identityOf(std::declval<Record>())), int> firstPlaces;
        firstPlaces.reserve(next.size());
        for (auto place = static_cast<int>(next.size()) - 1; place >= 0; --place) {
            firstPlaces.insert(identityOf(next[place]), place);
        }
        std::vector<int> places;
        places.reserve(static_cast<std::size_t>(records_.size()));
        int last = -1;
        for (const auto& record : records_) {
            const auto identity = identityOf(record);
            const bool isNeighbour = last + 1 < next.size() && identityOf(next[last + 1]) == identity;
            const int place = isNeighbour ? last + 1 : firstPlaces.value(identity, gone);
            places.push_back(place > last ? place : gone);
            last = std::max(last, place);
        }
        return places;
    }

    /// How many signals it takes to remove the rows without a place and to insert what is missing.
    [[nodiscard]] static int numberOfRuns(const std::vector<int>& places, qsizetype nextCount) {
        int runs = 0;
        int last = -1;
        bool isInGoneRun = false;
        for (const int place : places) {
            runs += place == gone && !isInGoneRun ? 1 : 0;
            isInGoneRun = place == gone;
            if (place != gone) {
                runs += place > last + 1 ? 1 : 0;
                last = place;
            }
        }
        return runs + (last + 1 < nextCount ? 1 : 0);
    }

    void removeGone(const std::vector<int>& places) {
        const auto isGone = [&places](int row) {
            return places[static_cast<std::size_t>(row)] == gone;
        };
        for (int end = static_cast<int>(places.size()); end > 0;) {
            int first = end;
            while (first > 0 && isGone(first - 1)) {
                --first;
            }
            if (first < end) {
                beginRemoveRows({}, first, end - 1);
                records_.remove(first, end - first);
                endRemoveRows();
            }
            end = first - 1;
        }
    }

    /// Which records of `next` have a row already.
    [[nodiscard]] static std::vector<bool> keptIn(const QList<Record>& next, const std::vector<int>& places) {
        std::vector<bool> kept(static_cast<std::size_t>(next.size()));
        for (const int place : places) {
            if (place != gone) {
                kept[static_cast<std::size_t>(place)] = true;
            }
        }
        return kept;
    }

    void insertMissing(const QList<Record>& next, const std::vector<bool>& kept) {
        forEachRun(
            kept.size(), [&kept](std::size_t row) { return !kept[row]; },
            [this, &next](int first, int end) {
                beginInsertRows({}, first, end - 1);
                records_.insert(first, end - first, next[first]);
                std::copy(next.begin() + first, next.begin() + end, records_.begin() + first);
                endInsertRows();
            });
    }

    void changeKept(const QList<Record>& next, const std::vector<bool>& kept) {
        std::vector<bool> isChanged(kept.size());
        for (std::size_t row = 0; row < kept.size(); ++row) {
            const auto place = static_cast<qsizetype>(row);
            isChanged[row] = kept[row] && differ(records_[place], next[place]);
        }
        records_ = next;
        forEachRun(
            kept.size(), [&isChanged](std::size_t row) { return isChanged[row]; },
            [this](int first, int end) { emit dataChanged(index(first), index(end - 1)); });
    }

    /// Calls `act` with the first row and the end of each run of rows that are `in`.
    static void forEachRun(std::size_t count, const auto& in, const auto& act) {
        for (std::size_t first = 0; first < count; ++first) {
            auto end = first;
            while (end < count && in(end)) {
                ++end;
            }
            if (end > first) {
                act(static_cast<int>(first), static_cast<int>(end));
                first = end;
            }
        }
    }

    void reset(const QList<Record>& next) {
        beginResetModel();
        records_ = next;
        endResetModel();
    }

    void tellCount(qsizetype countBefore) {
        if (records_.size() != countBefore) {
            emit countChanged();
        }
    }

    QList<Record> records_;
};

} // namespace brenvale
