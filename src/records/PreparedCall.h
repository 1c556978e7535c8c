#pragma once

#include <QString>

namespace brenvale {

/// A call that is about to run, as the desktop announces it to its own views.
struct PreparedCall {
    QString number;
    QString name; ///< as shown; may be empty

    bool operator==(const PreparedCall&) const = default;
};

} // namespace brenvale
