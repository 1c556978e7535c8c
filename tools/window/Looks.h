#pragma once

#include <QPalette>
#include <QString>

#include <vector>

namespace brenvale {

/// The palette and the icons of a desktop, by name.
struct Look {
    QString name;
    QPalette palette;
    QString iconTheme;
};

/// The desktops that the window is designed against.
[[nodiscard]] const std::vector<Look>& looks();

/// Makes the process look like that; false where there is no such look. Text is `textScale` times as large as
/// usual.
[[nodiscard]] bool useLook(const QString& name, double textScale);

} // namespace brenvale
