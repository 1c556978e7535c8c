#pragma once

#include <QString>
#include <QStringList>

namespace brenvale {

/// The file of the icon `name` that is drawn in one colour and scales to any size: in `themes`, the first
/// that has one, the themes that they inherit from included. `searchPaths` are the folders that hold themes.
/// Empty where there is none.
[[nodiscard]] QString iconThemeFile(const QString& name, const QStringList& themes,
                                    const QStringList& searchPaths);

} // namespace brenvale
