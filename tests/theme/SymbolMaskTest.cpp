#include "theme/SymbolMask.h"
#include "theme/IconThemeFiles.h"
#include "theme/SymbolImageProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

constexpr int side = 20;

const QByteArray head = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 20 20"><style type="text/css">
.ColorScheme-Text { color:#232629; } .ColorScheme-PositiveText { color:#27ae60; }</style>)";
const QByteArray left = R"(<path class="ColorScheme-Text" fill="currentColor" d="M0 0h12v20H0z"/>)";
const QByteArray middle = R"(<path class="ColorScheme-PositiveText" fill="currentColor" d="M6 5h12v10H6z"/>)";
const QByteArray mark = R"(<path fill="#fff" d="M13 8h4v4h-4z"/>)";

QImage maskOf(const QByteArray& shapes) {
    return maskOfSeveralColours(head + shapes + "</svg>", side,
                                [](QPainter& painter, const QByteArray& svg, const QRectF& area) {
                                    QSvgRenderer(svg).render(&painter, area);
                                });
}

int at(const QImage& mask, int x, int y) {
    return qAlpha(mask.pixel(x, y));
}

} // namespace

TEST(SymbolMask, OneColourIsTheShape) {
    const auto mask = maskOf(left);
    EXPECT_EQ(at(mask, 3, 10), 255);
    EXPECT_EQ(at(mask, 16, 10), 0);
}

TEST(SymbolMask, ASecondColourIsCutOutOfTheFirst) {
    const auto mask = maskOf(left + middle);
    EXPECT_EQ(at(mask, 3, 10), 255);
    EXPECT_EQ(at(mask, 9, 10), 0) << "where it lies on the first";
    EXPECT_EQ(at(mask, 16, 10), 255) << "where it stands alone";
}

TEST(SymbolMask, WhiteIsCutOutOfBoth) {
    const auto mask = maskOf(left + middle + mark);
    EXPECT_EQ(at(mask, 15, 10), 0);
    EXPECT_EQ(at(mask, 17, 6), 255);
    EXPECT_EQ(at(maskOf(middle + mark), 15, 10), 0) << "a second colour may be the only one";
}

TEST(SymbolMask, EachSymbolIsDrawnAndHasRoomAroundItsShape) {
    SymbolImageProvider provider;
    for (const auto& name : symbolNames()) {
        for (const int size : {16, 22, 32, 64}) {
            QSize given;
            const auto picture =
                provider.requestImage(name + QStringLiteral("//#ff0000"), &given, {size, size});
            int drawn = 0;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    drawn += qAlpha(picture.pixel(x, y)) > 127 ? 1 : 0;
                }
            }
            EXPECT_GT(drawn, size * size / 50) << name.toStdString() << ' ' << size;
            EXPECT_LT(drawn, size * size * 3 / 4) << name.toStdString() << ' ' << size;
        }
    }
}
