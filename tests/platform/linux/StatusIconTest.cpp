#include "platform/linux/StatusIcon.h"

#include <QGuiApplication>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct StatusIconTest : testing::Test {
    /// How many pixels that hide what is below are light, dark, or exactly `color`.
    struct Pixels {
        int light = 0;
        int dark = 0;
        int exact = 0;
        int all = 0;
    };

    static Pixels pixelsOf(const QPixmap& pixmap, const QColor& color = {}) {
        constexpr int opaque = 150;
        const auto image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
        Pixels pixels;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const auto pixel = image.pixelColor(x, y);
                if (pixel.alpha() >= opaque) {
                    ++pixels.all;
                    pixels.light += pixel.lightness() > 200 ? 1 : 0;
                    pixels.dark += pixel.lightness() < 60 ? 1 : 0;
                    pixels.exact += pixel.rgb() == color.rgb() ? 1 : 0;
                }
            }
        }
        return pixels;
    }

    int argumentCount = 1;
    QByteArray programName = "linux-tests";
    char* arguments[1] = {programName.data()};
    QGuiApplication application{argumentCount, arguments};
};

} // namespace

TEST_F(StatusIconTest, StandsInTheColourOfAPanelThatTellsIt) {
    const QColor color(Qt::white);
    const auto icon = statusIcon(color);
    const auto pixels = pixelsOf(icon.pixmap(32), color);
    EXPECT_GT(pixels.all, 50);
    EXPECT_EQ(pixels.exact, pixels.all);
}

TEST_F(StatusIconTest, IsLightWithADarkEdgeOnAPanelThatTellsNothing) {
    for (const int size : {16, 22, 48}) {
        const auto pixels = pixelsOf(statusIcon({}).pixmap(size));
        EXPECT_GT(pixels.light, size) << size;
        EXPECT_GT(pixels.dark, size) << size;
    }
}

TEST_F(StatusIconTest, IsDrawnForTheScaleOfTheScreen) {
    const auto pixmap = statusIcon({}).pixmap(QSize(22, 22), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(44, 44));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
    EXPECT_GT(pixelsOf(pixmap).light, 150);
}
