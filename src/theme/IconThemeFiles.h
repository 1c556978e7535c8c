#pragma once

#include <QString>
#include <QStringList>

namespace brenvale {

/// The file of the icon `name` that is drawn in one colour and scales to any size: in `themes`, the first
/// that has one, the themes that they inherit from included. Themes draw some icons for several sizes: the
/// drawing for `size` pixels is preferred. `searchPaths` are the folders that hold themes. Empty where there
/// is none.
[[nodiscard]] QString iconThemeFile(const QString& name, int size, const QStringList& themes,
                                    const QStringList& searchPaths);

} // namespace brenvale
