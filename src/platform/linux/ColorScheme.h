#pragma once

#include <QObject>

class QVariant;

namespace brenvale {

/// Gives the program dark colours while the desktop's user prefers them and the toolkit does not know: GNOME
/// tells it by the settings portal alone (`color-scheme` of `org.freedesktop.appearance`,
/// https://flatpak.github.io/xdg-desktop-portal). A desktop whose theme is dark by itself stays as it is.
/// Waits for no answer, and starts no portal. On main.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    ColorScheme();

private slots:
    void ask();

private:
    void apply(const QVariant& preference);

    bool isDark_ = false; ///< by our doing
};

} // namespace brenvale
