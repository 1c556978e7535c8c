#pragma once

#include "records/RecordListModel.h"
#include "records/SmsRecord.h"

#include <QSet>

namespace brenvale {

/// The messages of the open thread, oldest first. On main.
class MessageListModel final : public RecordListModel<SmsRecord> {
    Q_OBJECT

public:
    enum Role : int { BodyRole = Qt::UserRole + 1, ShownBodyRole, IsCutRole, TimeTextRole, IsSentRole };
    Q_ENUM(Role)

    /// `ShownBodyRole` is the body as far as a list lays it out at once: a book in a message is not to hold
    /// it up.
    static constexpr qsizetype mostShown = 3000;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// `ShownBodyRole` of this message is all of it from now on, in whichever thread and version.
    Q_INVOKABLE void showAll(int row);

    /// A newer version of the same thread.
    void setMessages(const QList<SmsRecord>& messages) { setRecords(messages); }

    /// Another thread.
    void showThread(const QList<SmsRecord>& messages) { resetRecords(messages); }

protected:
    [[nodiscard]] bool differ(const SmsRecord& shown, const SmsRecord& next) const override;

private:
    [[nodiscard]] bool isCut(const SmsRecord& message) const;

    QSet<decltype(identityOf(SmsRecord()))> unfolded_; ///< the messages that the user wanted all of
};

} // namespace brenvale
