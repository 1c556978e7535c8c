#include "platform/linux/StatusIcon.h"

#include <QPainter>
#include <QPixmap>

namespace brenvale {

namespace {

QPixmap tinted(QPixmap pixmap, const QColor& color) {
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

} // namespace

QIcon statusIcon(const QColor& color) {
    QIcon shape(QStringLiteral(":/StatusIcon.svg"));
    QList<int> sizes{16, 22, 24, 32, 48, 64};
    if (shape.pixmap(sizes.constFirst()).isNull()) {
        shape = QIcon::fromTheme(QStringLiteral("network-wireless"));
        sizes = {16};
    }
    QIcon icon;
    for (const auto size : sizes) {
        if (const auto pixmap = shape.pixmap(size); !pixmap.isNull()) {
            icon.addPixmap(tinted(pixmap, color));
        }
    }
    return icon;
}

} // namespace brenvale
