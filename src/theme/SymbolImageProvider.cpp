#include "theme/SymbolImageProvider.h"

#include "theme/IconThemeFiles.h"
#include "theme/SymbolMask.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace brenvale {

namespace {

constexpr int defaultSize = 16;
constexpr QStringView applicationIcon = u"application";
constexpr QStringView gradientCircle = u"gradient";

/// The size of the drawings whose edges fall between the pixels of a picture that is `side` wide.
int drawnSize(int side) {
    constexpr int smallSize = 16;
    constexpr int ordinarySize = 22;
    return side % ordinarySize != 0 && side % smallSize == 0 ? smallSize : ordinarySize;
}

void drawPicture(QPainter& painter, const QByteArray& svg, const QRectF& area) {
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter, area);
}

/// The icon's shape in `area`: what is opaque is drawn.
void drawShape(QPainter& painter, const QString& file, const QRectF& area) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        return;
    }
    const auto svg = source.readAll();
    if (const auto side = qRound(area.width()); hasSeveralColours(svg)) {
        painter.drawImage(area.topLeft(), maskOfSeveralColours(svg, side, drawPicture));
    } else {
        drawPicture(painter, svg, area);
    }
}

/// A filled circle with the icon cut out of it.
void drawOnCircle(QPainter& painter, const QString& file, const QRectF& area) {
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(area);
    if (!file.isEmpty()) {
        QImage shape(area.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        shape.fill(Qt::transparent);
        QPainter shapePainter(&shape);
        const auto inset = std::round(area.width() * 0.19);
        drawShape(shapePainter, file, area.adjusted(inset, inset, -inset, -inset));
        shapePainter.end();
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.drawImage(area.topLeft(), shape);
    }
}

/// The icon struck through, with a gap on both sides of the stroke.
void drawSlashed(QPainter& painter, const QString& file, const QRectF& area) {
    drawShape(painter, file, area);
    const auto inset = area.width() * 0.1;
    const auto stroke = area.adjusted(inset, inset, -inset, -inset);
    const QLineF line(stroke.topLeft(), stroke.bottomRight());
    const auto width = area.width() * 0.07;
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setPen(QPen(Qt::black, 3 * width, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(line);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(Qt::black, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
}

} // namespace

SymbolImageProvider::SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QString SymbolImageProvider::fileOf(const QString& name, int side) {
    if (const auto theme = QIcon::themeName(); theme != theme_) {
        theme_ = theme;
        files_.clear();
        hand_.clear();
    }
    const auto paths = QIcon::themeSearchPaths() + QStringList{QStringLiteral("/usr/share/icons")};
    if (hand_.isEmpty()) {
        hand_ = themeOfOneHand(theme_, paths);
    }
    const std::pair icon(name, drawnSize(side));
    if (const auto known = files_.constFind(icon); known != files_.cend()) {
        return *known;
    }
    const auto file = iconThemeFile(name, icon.second, {hand_, QStringLiteral("breeze"), theme_}, paths);
    files_.insert(icon, file);
    return file;
}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto parts = id.split(QLatin1Char('/'));
    const auto side = requestedSize.width() > 0 ? requestedSize.width() : defaultSize;
    *size = QSize(side, side);

    QImage image(*size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(0, 0, side, side);
    if (parts.value(0) == gradientCircle) {
        QLinearGradient gradient(area.topLeft(), area.bottomRight());
        gradient.setColorAt(0, QColor(parts.value(1)));
        gradient.setColorAt(1, QColor(parts.value(2)));
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawEllipse(area);
        return image;
    }
    if (id == applicationIcon) {
        drawShape(painter, QStringLiteral(":/org.brenvale.Brenvale.svg"), area);
        return image;
    }
    const auto file = fileOf(parts.value(0), side);
    if (file.isEmpty() || parts.value(1) == QStringLiteral("circle")) {
        drawOnCircle(painter, file, area);
    } else if (parts.value(1) == QStringLiteral("slash")) {
        drawSlashed(painter, file, area);
    } else {
        drawShape(painter, file, area);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(area, QColor(parts.value(2)));
    return image;
}

} // namespace brenvale
