#include "theme/SymbolMask.h"

#include <QPainter>
#include <QRegularExpression>
#include <QString>

#include <algorithm>

namespace brenvale {

namespace {

constexpr int opaque = 255;

constexpr QLatin1String firstOfAll("Text");

/// The names of its colours, in their order, the one of text first.
QStringList coloursOf(const QString& svg) {
    static const QRegularExpression shape(QStringLiteral("class=\"ColorScheme-(\\w+)\""));
    QStringList names;
    for (auto matches = shape.globalMatch(svg); matches.hasNext();) {
        if (const auto name = matches.next().captured(1); !names.contains(name)) {
            names.append(name);
        }
    }
    if (names.removeOne(firstOfAll)) {
        names.prepend(firstOfAll);
    }
    return names;
}

QString coloured(QString svg, const QString& name, const QString& colour) {
    const QRegularExpression rule(QStringLiteral("(\\.ColorScheme-%1\\s*\\{\\s*color:)[^;}]*").arg(name));
    return svg.replace(rule, QStringLiteral("\\1") + colour);
}

QString without(QString svg, const QString& name) {
    const auto shape = QStringLiteral("class=\"ColorScheme-%1\"").arg(name);
    return svg.replace(shape, QStringLiteral("display=\"none\" ") + shape);
}

} // namespace

bool hasSeveralColours(const QByteArray& svg) {
    return svg.contains("class=\"ColorScheme-");
}

QImage maskOfSeveralColours(
    const QByteArray& svg, int side,
    const std::function<void(QPainter& painter, const QByteArray& svg, const QRectF& area)>& draw) {
    const auto source = QString::fromUtf8(svg);
    const auto names = coloursOf(source);
    auto all = source;
    auto first = source;
    for (const auto& name : names) {
        const bool isFirst = name == names.first();
        all = coloured(all, name, isFirst ? QStringLiteral("#000000") : QStringLiteral("#0000ff"));
        first = isFirst ? coloured(first, name, QStringLiteral("#000000")) : without(first, name);
    }
    const auto pictureOf = [&](const QString& text) {
        QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, text.toUtf8(), QRectF(0, 0, side, side));
        return picture;
    };
    auto mask = pictureOf(all);
    const auto firstOnly = pictureOf(first);
    for (int y = 0; y < side; ++y) {
        auto* row = reinterpret_cast<QRgb*>(mask.scanLine(y)); // NOLINT: as the toolkit says
        for (int x = 0; x < side; ++x) {
            // White counts as nothing: it has as much red as there is of it.
            const auto below = firstOnly.pixelColor(x, y).toRgb();
            const auto pixel = row[x];
            const int second = std::max(0, qBlue(pixel) - qRed(pixel));
            const int under = below.alpha() * (opaque - below.red()) / opaque;
            const int shown = names.size() > 1
                                  ? (under * (opaque - second) + second * (opaque - under)) / opaque
                                  : std::max(0, qAlpha(pixel) - qRed(pixel));
            row[x] = qRgba(0, 0, 0, shown);
        }
    }
    return mask;
}

} // namespace brenvale
