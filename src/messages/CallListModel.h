#pragma once

#include "records/CallRecord.h"
#include "records/RecordListModel.h"

namespace brenvale {

class Clock;
class ContactNames;

/// The phone's call log in the phone's order. On main.
class CallListModel final : public RecordListModel<CallRecord> {
    Q_OBJECT

public:
    enum Role : int {
        NumberRole = Qt::UserRole + 1,
        ShownNameRole,
        RelativeDateRole,
        IsMissedRole,
        IsOutgoingRole
    };
    Q_ENUM(Role)

    CallListModel(const ContactNames& names, const Clock& clock);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setCalls(const QList<CallRecord>& calls) { setRecords(calls); }

    /// To be called when the names, or the day, may have changed.
    void refresh();

protected:
    [[nodiscard]] bool differ(const CallRecord& shown, const CallRecord& next) const override;

private:
    const ContactNames& names_;
    const Clock& clock_;
};

} // namespace brenvale
