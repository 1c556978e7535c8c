#pragma once

#include "messages/Conversation.h"
#include "records/RecordListModel.h"

namespace brenvale {

class Clock;
class ContactNames;

/// The rows of the list of conversations. On main.
class ConversationListModel final : public RecordListModel<Conversation> {
    Q_OBJECT

public:
    enum Role : int {
        DisplayAddressRole = Qt::UserRole + 1,
        ShownNameRole,
        InitialsRole,
        RelativeDateRole,
        LastBodyRole ///< its beginning, as one line
    };
    Q_ENUM(Role)

    ConversationListModel(const ContactNames& names, const Clock& clock);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setConversations(const QList<Conversation>& conversations) { setRecords(conversations); }

    /// To be called when the names, or the day, may have changed.
    void refresh();

protected:
    [[nodiscard]] bool differ(const Conversation& shown, const Conversation& next) const override;

private:
    const ContactNames& names_;
    const Clock& clock_;
};

} // namespace brenvale
