#pragma once

#include <QString>

#include <optional>

namespace brenvale {

class ChildPrograms;

/// Starts the default program for `location` with exactly that address; gives nothing, or why it could not.
/// The program outlives us and has none of our files or streams. May wait; any thread.
[[nodiscard]] std::optional<QString> openLocation(const QString& location, const ChildPrograms& programs);

} // namespace brenvale
