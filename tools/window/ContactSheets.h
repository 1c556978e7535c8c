#pragma once

#include <QString>
#include <QStringList>

namespace brenvale {

/// Puts the pictures NAME-STATE.png of several folders side by side, a column a folder and a row a state, as
/// FOLDER/sheet-NAME.png: one for each name of a tab. False where a picture cannot be written.
[[nodiscard]] bool writeContactSheets(const QString& folder, const QStringList& columns);

} // namespace brenvale
