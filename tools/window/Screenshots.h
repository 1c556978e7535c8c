#pragma once

#include <QString>

namespace brenvale {

/// Stores a picture of every tab in every sample state, in the look and the scale of this process, as
/// FOLDER/TAB-STATE.png, and those of the call panels as FOLDER/panel-….png. False where a picture cannot be
/// written.
[[nodiscard]] bool takeScreenshots(const QString& folder);

} // namespace brenvale
