#include "Looks.h"

#include <QApplication>
#include <QFontInfo>
#include <QIcon>

#include <algorithm>

namespace brenvale {

namespace {

struct Colours {
    const char* window;
    const char* base;
    const char* text;
    const char* highlight;
    const char* highlightedText;
};

QPalette paletteOf(const Colours& colours) {
    const QColor window(colours.window);
    const QColor text(colours.text);
    QPalette palette(text, window, window.lighter(), window.darker(), window.darker(110), text, Qt::white,
                     QColor(colours.base), window);
    palette.setColor(QPalette::Highlight, QColor(colours.highlight));
    palette.setColor(QPalette::HighlightedText, QColor(colours.highlightedText));
    return palette;
}

} // namespace

const std::vector<Look>& looks() {
    static const std::vector<Look> all{
        {QStringLiteral("breeze-light"), paletteOf({"#eff0f1", "#ffffff", "#232629", "#3daee9", "#fcfcfc"}),
         QStringLiteral("breeze")},
        {QStringLiteral("breeze-dark"), paletteOf({"#2a2e32", "#1b1e20", "#fcfcfc", "#3daee9", "#fcfcfc"}),
         QStringLiteral("breeze-dark")},
        {QStringLiteral("adwaita-light"), paletteOf({"#f6f5f4", "#ffffff", "#2e3436", "#3584e4", "#ffffff"}),
         QStringLiteral("Adwaita")},
        {QStringLiteral("adwaita-dark"), paletteOf({"#353535", "#2d2d2d", "#eeeeec", "#15539e", "#ffffff"}),
         QStringLiteral("Adwaita")},
        {QStringLiteral("high-contrast"), paletteOf({"#000000", "#000000", "#ffffff", "#ffff00", "#000000"}),
         QStringLiteral("breeze-dark")}};
    return all;
}

bool useLook(const QString& name, double textScale) {
    const auto look = std::ranges::find(looks(), name, &Look::name);
    if (look == looks().end()) {
        return false;
    }
    QApplication::setPalette(look->palette);
    QIcon::setThemeName(look->iconTheme);
    auto font = QApplication::font();
    font.setPixelSize(qRound(QFontInfo(font).pixelSize() * textScale));
    QApplication::setFont(font);
    return true;
}

} // namespace brenvale
