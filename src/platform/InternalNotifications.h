#pragma once

#include "records/CallRecord.h"
#include "records/PreparedCall.h"
#include "records/SmsRecord.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <variant>
#include <vector>

namespace brenvale {

/// Named announcements inside the process, from the link to the views. An announcement that nobody observes
/// is lost. On main.
class InternalNotifications {
public:
    using Object = std::variant<QList<SmsRecord>, QList<CallRecord>, qint64, PreparedCall, QString>;
    using Handler = std::function<void(const Object&)>;

    /// Keeps an observer registered for as long as it is held.
    using Observation = std::shared_ptr<const void>;

    static constexpr QStringView smsHistoryUpdated = u"SmsHistoryUpdated";     ///< the whole log
    static constexpr QStringView callHistoryUpdated = u"CallHistoryUpdated";   ///< the whole log
    static constexpr QStringView callDurationUpdated = u"CallDurationUpdated"; ///< seconds, or `callIsOver`
    static constexpr qint64 callIsOver = -1;
    static constexpr QStringView prepareActiveCall =
        u"PrepareActiveCall"; ///< a call that is about to run, or its bare number

    /// Calls `handler` for every later `post` under `name`.
    [[nodiscard]] Observation addObserver(QStringView name, Handler handler);

    /// Calls the observers of `name` with `object`, in the order in which they registered, before it returns.
    void post(QStringView name, const Object& object);

private:
    struct Observer {
        QString name;
        Handler handler;
    };
    std::vector<std::weak_ptr<const Observer>> observers_;
};

} // namespace brenvale
