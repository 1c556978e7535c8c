#include "records/HistoryListModels.h"

#include "messages/Characters.h"
#include "messages/ContactNames.h"
#include "records/HistoryStore.h"
#include "records/Instant.h"
#include "records/RecordId.h"
#include "transfer/TransferText.h"

#include <algorithm>
#include <utility>

namespace brenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto frame = 16ms;

/// A value for QML, undefined where there is none.
template <typename Value>
QVariant optionalVariant(const std::optional<Value>& value) {
    return value ? QVariant(*value) : QVariant();
}

QString badgeOf(const NotifPayload& payload) {
    const auto& named = payload.app.isEmpty() ? payload.title : payload.app;
    return named.isEmpty() ? QStringLiteral("?") : firstCharacter(named).toUpper();
}

} // namespace

NotifListModel::NotifListModel(HistoryStore& store, const ContactNames& names)
    : names_(names), subscription_(store.items.subscribe([this](const auto& items) { setRecords(items); })) {}

QVariant NotifListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& payload = records()[index.row()];
    switch (role) {
    case RowIdRole:
        return recordIdText(payload.id);
    case BadgeRole:
        return badgeOf(payload);
    case AppRole:
        return payload.app;
    case ShownAppRole:
        return payload.app.isEmpty() ? QStringLiteral("Notification") : payload.app;
    case TitleRole:
        return payload.title;
    case ShownTitleRole:
        return payload.title.isEmpty() ? QString() : names_.contactName(payload.title);
    case BodyRole:
        return payload.body;
    case TimeTextRole:
        return payload.formattedTime();
    case KeyRole:
        return optionalVariant(payload.key);
    default:
        return {};
    }
}

QHash<int, QByteArray> NotifListModel::roleNames() const {
    return {{RowIdRole, "rowId"},       {BadgeRole, "badge"},       {AppRole, "app"},
            {ShownAppRole, "shownApp"}, {TitleRole, "title"},       {ShownTitleRole, "shownTitle"},
            {BodyRole, "body"},         {TimeTextRole, "timeText"}, {KeyRole, "key"}};
}

void NotifListModel::refreshNames() {
    refreshRoles({ShownTitleRole, TimeTextRole});
}

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
        return optionalVariant(record.url);
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

ClipboardListModel::ClipboardListModel(HistoryStore& store)
    : subscription_(store.clipboardHistory.subscribe([this](const auto& entries) { setRecords(entries); })) {}

QVariant ClipboardListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& entry = records()[index.row()];
    switch (role) {
    case TextRole:
        return entry.text;
    case DateRole:
        return entry.date;
    case DateTextRole:
        return abbreviatedDateAndTime(entry.date);
    default:
        return {};
    }
}

QHash<int, QByteArray> ClipboardListModel::roleNames() const {
    return {{TextRole, "text"}, {DateRole, "date"}, {DateTextRole, "dateText"}};
}

} // namespace brenvale
