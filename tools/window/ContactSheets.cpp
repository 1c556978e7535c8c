#include "ContactSheets.h"

#include "SampleStates.h"

#include <QImage>
#include <QPainter>

namespace brenvale {

namespace {

constexpr int cellWidth = 480;
constexpr int cellHeight = 311; ///< of the window's own shape
constexpr int gap = 8;
constexpr int titleHeight = 20;

} // namespace

bool writeContactSheets(const QString& folder, const QStringList& columns) {
    for (const auto& entry : SettingsView::sidebarTabs()) {
        const auto tab =
            entry.toMap().value(QStringLiteral("label")).toString().toLower().replace(u' ', u'-');
        QImage sheet((static_cast<int>(columns.size()) * (cellWidth + gap)) + gap,
                     titleHeight + (static_cast<int>(sampleStates().size()) * (cellHeight + gap)) + gap,
                     QImage::Format_RGB32);
        sheet.fill(Qt::gray);
        QPainter painter(&sheet);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        int x = gap;
        for (const auto& column : columns) {
            painter.drawText(x, titleHeight - 4, column);
            int y = titleHeight;
            for (const auto& state : sampleStates()) {
                const QImage picture(QStringLiteral("%1/%2/%3-%4.png").arg(folder, column, tab, state.name));
                painter.drawImage(QPoint(x, y), picture.scaled(cellWidth, cellHeight, Qt::KeepAspectRatio,
                                                               Qt::SmoothTransformation));
                y += cellHeight + gap;
            }
            x += cellWidth + gap;
        }
        painter.end();
        if (!sheet.save(QStringLiteral("%1/sheet-%2.png").arg(folder, tab))) {
            return false;
        }
    }
    return true;
}

} // namespace brenvale
