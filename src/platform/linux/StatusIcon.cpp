#include "platform/linux/StatusIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

const QString symbolicName = QStringLiteral("org.brenvale.Brenvale-symbolic");

QPixmap tinted(QPixmap pixmap, const QColor& color) {
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

/// The shape in white, with a dark edge of a sixteenth of its size, a pixel at least.
QPixmap edged(const QPixmap& shape) {
    constexpr std::array<QPoint, 8> around{
        {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}}};
    const auto dark = tinted(shape, QColor(0, 0, 0, 160));
    const int width = std::max(1, shape.width() / 16);
    QPixmap pixmap(shape.size());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    for (const auto& direction : around) {
        painter.drawPixmap(direction * width, dark);
    }
    painter.drawPixmap(0, 0, tinted(shape, Qt::white));
    return pixmap;
}

/// Draws the shape at whatever size it is asked for.
class StatusIconEngine final : public QIconEngine {
public:
    StatusIconEngine(QIcon shape, const std::optional<QColor>& color)
        : shape_(std::move(shape)), color_(color) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const auto scale = painter->device() != nullptr ? painter->device()->devicePixelRatio() : 1.0;
        painter->drawPixmap(rect, drawn(rect.size() * scale));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return drawn(size);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/,
                         [[maybe_unused]] qreal scale) override {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        return drawn(size * scale);
#else
        return drawn(size); // these are the device's pixels already
#endif
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        QList<QSize> sizes;
        for (const int size : {16, 22, 24, 32, 44, 48, 64}) {
            sizes.append({size, size});
        }
        return sizes;
    }

    QString iconName() override { return QIcon::hasThemeIcon(symbolicName) ? symbolicName : QString(); }

    [[nodiscard]] QIconEngine* clone() const override { return new StatusIconEngine(*this); }

private:
    /// In pixels of the device.
    [[nodiscard]] QPixmap drawn(const QSize& size) const {
        const auto shape = shape_.pixmap(size, 1.0);
        return color_ ? tinted(shape, *color_) : edged(shape);
    }

    QIcon shape_;
    std::optional<QColor> color_;
};

} // namespace

QIcon statusIcon(const std::optional<QColor>& color) {
    QIcon shape(QStringLiteral(":/StatusIcon.svg"));
    if (shape.pixmap(16).isNull()) {
        shape = QIcon::fromTheme(QStringLiteral("network-wireless"));
    }
    return QIcon(new StatusIconEngine(std::move(shape), color));
}

} // namespace brenvale
