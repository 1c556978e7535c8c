#pragma once

#include "records/CallRecord.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace brenvale {

/// The name that is shown for an address. There is no address book: names come from the phone's own records.
class ContactNames {
public:
    /// Takes the names from a call log. Of the calls of one number only the first in the log counts, even if
    /// it has no name.
    void setCallLog(const QList<CallRecord>& calls);

    /// `providedName` if it is there and not empty, else the call log's name, else `address` itself.
    [[nodiscard]] QString contactName(const QString& address,
                                      const std::optional<QString>& providedName = {}) const;

    /// The same for an address whose normal form is known.
    [[nodiscard]] QString contactName(const QString& address, const QString& normalizedAddress,
                                      const std::optional<QString>& providedName) const;

private:
    QHash<QString, QString> names_; ///< by normal form; empty where the first call has no name
};

} // namespace brenvale
