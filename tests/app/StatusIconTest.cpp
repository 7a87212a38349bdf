#include "app/StatusIcon.h"

#include <QImage>
#include <QPixmap>

#include <gtest/gtest.h>

namespace kestrelbay {
namespace {

QImage drawn(bool enabled, std::optional<bool> onDark, int side) {
    return statusIcon(enabled, onDark)
        .pixmap(QSize(side, side), 1)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

/// How light the pixels are that cover what is behind them.
double lightness(const QImage &image) {
    double sum = 0;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() < 250)
                continue;
            sum += color.lightnessF();
            ++count;
        }
    }
    return count ? sum / count : -1;
}

TEST(StatusIcon, IsLightOnADarkGroundAndDarkOnALightOne) {
    EXPECT_GT(lightness(drawn(true, true, 22)), 0.9);
    EXPECT_LT(lightness(drawn(true, false, 22)), 0.1);
    EXPECT_GE(lightness(drawn(true, false, 22)), 0);
}

TEST(StatusIcon, HasAnEdgeOfTheOtherColour) {
    const QImage image = drawn(true, true, 22);
    bool found = false;
    for (int y = 0; y < 22; ++y) {
        for (int x = 0; x < 22; ++x) {
            const QColor color = image.pixelColor(x, y);
            found = found || (color.alpha() > 60 && color.lightnessF() < 0.3);
        }
    }
    EXPECT_TRUE(found);
}

TEST(StatusIcon, TellsTheStatesApart) {
    EXPECT_NE(drawn(true, true, 22), drawn(false, true, 22));
    EXPECT_NE(drawn(true, false, 22), drawn(false, false, 22));
}

TEST(StatusIcon, IsDrawnForEverySize) {
    for (const int side : {16, 20, 22, 24, 32, 48, 64}) {
        const QImage image = drawn(true, true, side);
        EXPECT_EQ(image.size(), QSize(side, side));
        EXPECT_GT(lightness(image), 0.9) << side;
    }
    EXPECT_EQ(statusIcon(true, true).availableSizes(),
              QList<QSize>({{16, 16}, {22, 22}, {24, 24}, {32, 32}}));
}

TEST(StatusIcon, IsAMaskWhereTheSystemTints) {
    EXPECT_TRUE(statusIcon(true, std::nullopt).isMask());
    EXPECT_FALSE(statusIcon(true, true).isMask());
    const QImage mask = drawn(true, std::nullopt, 22);
    EXPECT_EQ(mask.pixelColor(0, 0).alpha(), 0);
    EXPECT_LT(lightness(mask), 0.1);
}

}  // namespace
}  // namespace kestrelbay
