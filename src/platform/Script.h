#pragma once

#include <QString>

#include <expected>
#include <variant>

namespace brenvale {

/// What a script does. The forms below are all that there are.
struct ChangeOutputVolume {
    int difference = 0; ///< in hundredths of the full volume

    friend bool operator==(const ChangeOutputVolume&, const ChangeOutputVolume&) = default;
};

struct OpenLocation {
    QString location; ///< not empty, character for character what stood between the quotes

    friend bool operator==(const OpenLocation&, const OpenLocation&) = default;
};

struct EmptyTrash {
    friend bool operator==(const EmptyTrash&, const EmptyTrash&) = default;
};

struct LockScreen {
    friend bool operator==(const LockScreen&, const LockScreen&) = default;
};

struct Sleep {
    friend bool operator==(const Sleep&, const Sleep&) = default;
};

using Script = std::variant<ChangeOutputVolume, OpenLocation, EmptyTrash, LockScreen, Sleep>;

/// What `source` says, or why it is no script that is performed. It is compared, not evaluated: a script with
/// anything before, behind or within one of the forms is refused whole, and a backslash in a location is a
/// backslash. Pure.
[[nodiscard]] std::expected<Script, QString> readScript(const QString& source);

} // namespace brenvale
