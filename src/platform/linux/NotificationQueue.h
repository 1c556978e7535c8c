#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/linux/NotificationStates.h"

#include <QMultiHash>

#include <map>
#include <optional>
#include <variant>
#include <vector>

namespace brenvale {

/// What the notification server has still to be told, in order. Bounded in bytes, and in number where nobody
/// takes anything out; the oldest notifications go then, and never a removal. A removal that changes nothing
/// need not be put in, so that these are bounded too. One thread.
class NotificationQueue {
public:
    static constexpr qsizetype maxWaiting = 1000;     ///< while the server stands still
    static constexpr qsizetype maxBytes = 64LL << 20; ///< at any time

    /// A notification to show.
    struct Show {
        NotificationRequest request;
        UserNotificationCenter::Completion completion;
        RequestState state = RequestState::waiting;
        quint64 place = 0; ///< in the order of all steps; 0 gets the last one

        void complete(const std::optional<QString>& error);
    };

    /// A notification to take away.
    struct Close {
        RequestIdentifier identifier;
    };

    using Step = std::variant<Show, Close>;

    void add(Show show);
    void add(Close close);

    [[nodiscard]] bool isEmpty() const { return steps_.empty(); }

    /// Notifications that wait.
    [[nodiscard]] qsizetype showCount() const { return showCount_; }

    /// Whose turn it is next; there must be one.
    [[nodiscard]] const RequestIdentifier& front() const;
    [[nodiscard]] Step takeFront();

    /// Takes out the notifications of that name; removals stay.
    [[nodiscard]] std::vector<Show> takeShows(const RequestIdentifier& identifier);

    /// Takes out the oldest notifications that are too many.
    [[nodiscard]] std::vector<Show> takeExcess(bool serverStandsStill);

    /// Takes out all notifications and forgets the rest.
    [[nodiscard]] std::vector<Show> takeAll();

private:
    using Steps = std::map<quint64, Step>;

    Step take(Steps::iterator step);
    void put(quint64 place, Step step);

    Steps steps_; ///< by their place
    QMultiHash<RequestIdentifier, quint64> places_;
    quint64 lastPlace_ = 0;
    qsizetype showCount_ = 0;
    qsizetype bytes_ = 0; ///< of the notifications
};

} // namespace brenvale
