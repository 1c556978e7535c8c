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

/// The theme that draws all symbols, so that they are of one hand: `theme` where it has each of them as a
/// drawing of its own in one colour, Breeze otherwise. The dark Breeze is the same hand.
[[nodiscard]] QString themeOfOneHand(const QString& theme, const QStringList& searchPaths);

/// The names of all symbols.
[[nodiscard]] const QStringList& symbolNames();

} // namespace brenvale
