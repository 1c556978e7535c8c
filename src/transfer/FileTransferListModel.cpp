#include "transfer/FileTransferListModel.h"

#include "records/HistoryStore.h"
#include "transfer/TransferText.h"

#include <algorithm>
#include <utility>

namespace brenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto frame = 16ms;

} // namespace

FileTransferListModel::FileTransferListModel(HistoryStore& store)
    : subscription_(store.fileTransfers.subscribe([this](const auto& transfers) { follow(transfers); })) {
    frameEnd_.setSingleShot(true);
    frameEnd_.setTimerType(Qt::PreciseTimer);
    frameEnd_.setInterval(frame);
    frameEnd_.callOnTimeout(this, [this] { showNow(std::exchange(upcoming_, {})); });
}

void FileTransferListModel::follow(const QList<FileTransferRecord>& next) {
    if (!isOnlyProgress(next)) {
        showNow(next);
        return;
    }
    upcoming_ = next;
    if (!frameEnd_.isActive()) {
        frameEnd_.start();
    }
}

/// Whether nothing but the progress of rows would change, and some of it would.
bool FileTransferListModel::isOnlyProgress(const QList<FileTransferRecord>& next) const {
    const auto isSameButProgress = [](const FileTransferRecord& shown, const FileTransferRecord& other) {
        return shown.id == other.id && shown.isCompleted == other.isCompleted && shown.url == other.url;
    };
    return std::ranges::equal(records(), next, isSameButProgress) &&
           !std::ranges::equal(records(), next, {}, &FileTransferRecord::progress,
                               &FileTransferRecord::progress);
}

void FileTransferListModel::showNow(const QList<FileTransferRecord>& next) {
    frameEnd_.stop();
    upcoming_.clear();
    setRecords(next);
}

QVariant FileTransferListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& record = records()[index.row()];
    switch (role) {
    case FileNameRole:
        return record.fileName;
    case UrlRole:
        return record.url ? QVariant(*record.url) : QVariant(); // undefined in QML
    case FileSizeRole:
        return record.fileSize;
    case DateRole:
        return record.date;
    case IsOutgoingRole:
        return record.isOutgoing;
    case ProgressRole:
        return record.progress;
    case ProgressTextRole:
        return progressText(record.progress);
    case IsCompletedRole:
        return record.isCompleted;
    case StatusTextRole:
        return completionText(record);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileTransferListModel::roleNames() const {
    return {{FileNameRole, "fileName"},         {UrlRole, "url"},
            {FileSizeRole, "fileSize"},         {DateRole, "date"},
            {IsOutgoingRole, "isOutgoing"},     {ProgressRole, "progress"},
            {ProgressTextRole, "progressText"}, {IsCompletedRole, "isCompleted"},
            {StatusTextRole, "statusText"}};
}

bool FileTransferListModel::differ(const FileTransferRecord& shown, const FileTransferRecord& next) const {
    return shown.progress != next.progress || shown.isCompleted != next.isCompleted || shown.url != next.url;
}

} // namespace brenvale
