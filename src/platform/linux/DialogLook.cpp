#include "platform/linux/DialogLook.h"

#include <QFontMetrics>
#include <QIcon>
#include <QPushButton>
#include <QStringList>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace brenvale {

namespace {

constexpr double readable = 4.5;
constexpr qsizetype mostLaidOut = 4000; ///< a message may be a book

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return (0.2126 * linear(colour.redF())) + (0.7152 * linear(colour.greenF())) +
           (0.0722 * linear(colour.blueF()));
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The tint moved away from the text on it until that can be read.
QColor tintBelow(const QColor& text, const QColor& tint) {
    const double far = luminance(text) > 0.5 ? 0 : 1;
    auto fill = tint;
    for (double share = 0.02; share <= 1 && contrast(text, fill) < readable; share += 0.02) {
        const auto moved = [share, far](double part) {
            return static_cast<float>(part + ((far - part) * share));
        };
        fill = QColor::fromRgbF(moved(tint.redF()), moved(tint.greenF()), moved(tint.blueF()));
    }
    return fill;
}

/// Height, radius and insets as in the main window; the ring of the focus keeps the button's size.
QString styleOf(const QColor& fill, const QColor& text, const QColor& border, const QColor& ring) {
    return QStringLiteral("QPushButton { background: %1; color: %2; border: 2px solid %3; border-radius: 6px;"
                          " padding: 4px 12px; min-height: 18px; }"
                          "QPushButton:focus { border-color: %4; }"
                          "QPushButton:pressed { background: %5; }")
        .arg(fill.name(), text.name(), border.name(), ring.name(), fill.darker(115).name());
}

} // namespace

void useProgramIcon(QWidget& window) {
    window.setWindowIcon(QIcon(QStringLiteral(":/org.brenvale.Brenvale.svg")));
}

void makeProminent(QPushButton& button) {
    const auto palette = button.palette();
    const auto text = palette.color(QPalette::HighlightedText);
    const auto fill = tintBelow(text, palette.color(QPalette::Highlight));
    button.setStyleSheet(styleOf(fill, text, fill, palette.color(QPalette::WindowText)));
    button.setDefault(true);
}

void makePlain(QPushButton& button) {
    const auto palette = button.palette();
    const auto fill = palette.color(QPalette::Button);
    button.setStyleSheet(styleOf(fill, palette.color(QPalette::ButtonText), palette.color(QPalette::Mid),
                                 palette.color(QPalette::Highlight)));
}

QString wrapped(const QString& text, const QFont& font, int width, int mostLines) {
    const auto line = text.first(std::min(text.size(), mostLaidOut)).simplified();
    QTextLayout layout(line, font);
    QStringList lines;
    layout.beginLayout();
    while (lines.size() < mostLines) {
        auto next = layout.createLine();
        if (!next.isValid()) {
            break;
        }
        next.setLineWidth(width);
        const auto start = next.textStart();
        const bool isLast = lines.size() == mostLines - 1;
        lines.append(isLast ? QFontMetrics(font).elidedText(line.sliced(start), Qt::ElideRight, width)
                            : line.sliced(start, next.textLength()).trimmed());
    }
    layout.endLayout();
    return lines.join(QLatin1Char('\n'));
}

} // namespace brenvale
