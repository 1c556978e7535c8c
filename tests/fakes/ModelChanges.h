#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace brenvale {

/// Writes down what a view is told.
inline void recordChanges(QAbstractItemModel& model, std::vector<std::string>& changes) {
    const auto note = [&changes](const char* what, int first, int last) {
        changes.push_back(std::string(what) + " " + std::to_string(first) + "-" + std::to_string(last));
    };
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
                     [note](const QModelIndex&, int first, int last) { note("insert", first, last); });
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model,
                     [note](const QModelIndex&, int first, int last) { note("remove", first, last); });
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                     [note](const QModelIndex& first, const QModelIndex& last) {
                         note("change", first.row(), last.row());
                     });
    QObject::connect(&model, &QAbstractItemModel::modelReset, &model,
                     [&changes] { changes.emplace_back("reset"); });
}

/// Counts the emissions of `signal`.
template <typename Object>
std::shared_ptr<int> countSignals(Object& object, void (Object::*signal)()) {
    auto count = std::make_shared<int>(0);
    QObject::connect(&object, signal, &object, [count] { ++*count; });
    return count;
}

/// The texts that a model has for a role, row by row.
inline QStringList column(const QAbstractItemModel& model, int role) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts.append(model.index(row, 0).data(role).toString());
    }
    return texts;
}

} // namespace brenvale
