#pragma once

#include "records/RecordListModel.h"
#include "records/SmsRecord.h"

namespace brenvale {

/// The messages of the open thread, oldest first. On main.
class MessageListModel final : public RecordListModel<SmsRecord> {
    Q_OBJECT

public:
    enum Role : int { BodyRole = Qt::UserRole + 1, TimeTextRole, IsSentRole };
    Q_ENUM(Role)

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// A newer version of the same thread.
    void setMessages(const QList<SmsRecord>& messages) { setRecords(messages); }

    /// Another thread.
    void showThread(const QList<SmsRecord>& messages) { resetRecords(messages); }

protected:
    [[nodiscard]] bool differ(const SmsRecord& shown, const SmsRecord& next) const override;
};

} // namespace brenvale
