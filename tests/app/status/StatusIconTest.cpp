#include "app/status/StatusItem.h"

#include <cstdlib>

#include <QImage>
#include <QImageReader>
#include <QPixmap>

#include <gtest/gtest.h>

#include "ui/look/Symbols.h"

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

/// Has the symbol's own colour at a place, given as shares of the side.
bool isInk(const QImage &image, double x, double y, bool onDark) {
    const QColor color =
        image.pixelColor(static_cast<int>(x * image.width()), static_cast<int>(y * image.height()));
    return color.alphaF() > 0.6 && (onDark ? color.lightnessF() > 0.6 : color.lightnessF() < 0.4);
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

TEST(StatusIcon, IsStruckThroughFromCornerToCornerWhileDisabled) {
    for (const bool onDark : {true, false}) {
        for (const int side : {16, 22, 24, 32}) {
            const QImage on = drawn(true, onDark, side);
            const QImage off = drawn(false, onDark, side);
            for (double place = 0.16; place < 0.85; place += 0.02)
                EXPECT_TRUE(isInk(off, place, place, onDark)) << side << " at " << place;
            for (const double corner : {0.16, 0.25, 0.75, 0.84})
                EXPECT_FALSE(isInk(on, corner, corner, onDark)) << side << " at " << corner;
        }
    }
}

TEST(StatusIcon, IsABoltInBothStatesAndCutOpenAlongTheLine) {
    for (const bool onDark : {true, false}) {
        for (const int side : {16, 22, 24, 32}) {
            const QImage on = drawn(true, onDark, side);
            const QImage off = drawn(false, onDark, side);
            for (const QPointF bolt : {QPointF(0.28, 0.54), QPointF(0.72, 0.46)}) {
                EXPECT_TRUE(isInk(on, bolt.x(), bolt.y(), onDark)) << side;
                EXPECT_TRUE(isInk(off, bolt.x(), bolt.y(), onDark)) << side;
            }
            for (const QPointF beside : {QPointF(0.56, 0.44), QPointF(0.44, 0.56)}) {
                EXPECT_TRUE(isInk(on, beside.x(), beside.y(), onDark)) << side;
                EXPECT_FALSE(isInk(off, beside.x(), beside.y(), onDark)) << side;
            }
        }
    }
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

TEST(StatusIcon, HasEveryPixelOfASharpScreen) {
    for (const std::optional<bool> onDark : {std::optional<bool>(), std::optional(true)}) {
        const QPixmap sharp = statusIcon(true, onDark).pixmap(QSize(22, 22), 2);
        EXPECT_EQ(sharp.devicePixelRatio(), 2);
        QImage image = sharp.toImage().convertToFormat(QImage::Format_ARGB32);
        image.setDevicePixelRatio(1);
        EXPECT_EQ(image, drawn(true, onDark, 44));
    }
    // None is made of another.
    const QImage symbol = symbolPixmap(QStringLiteral("bolt.fill"), {32, 32}, Qt::black, 1)
                              .toImage()
                              .convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(drawn(true, std::nullopt, 44).copy(6, 6, 32, 32), symbol);
}

TEST(StatusIcon, IsAMaskWhereTheSystemTints) {
    EXPECT_TRUE(statusIcon(true, std::nullopt).isMask());
    EXPECT_FALSE(statusIcon(true, true).isMask());
    const QImage mask = drawn(true, std::nullopt, 22);
    EXPECT_EQ(mask.pixelColor(0, 0).alpha(), 0);
    EXPECT_LT(lightness(mask), 0.1);
}

TEST(StatusIcon, IsSentWithItsNameInTheTheme) {
    const QString name = statusIconName(true);
    EXPECT_EQ(statusIcon(true, true, name).name(), name);
    EXPECT_EQ(statusIcon(true, true).name(), QString());
}

TEST(StatusIcon, IsDrawnAlikeInTheTheme) {
    constexpr int kSide = 64;
    constexpr int kVisible = 100;  // of 255
    for (const bool enabled : {true, false}) {
        QImageReader reader(
            QStringLiteral(KESTRELBAY_THEME_ICONS "/%1.svg").arg(statusIconName(enabled)));
        reader.setScaledSize({kSide, kSide});
        const QImage installed = reader.read();
        ASSERT_EQ(installed.size(), QSize(kSide, kSide)) << qPrintable(reader.errorString());
        const QImage own =
            symbolPixmap(enabled ? QStringLiteral("bolt.fill") : QStringLiteral("bolt.slash.fill"),
                         {kSide, kSide}, Qt::black, 1)
                .toImage();
        int different = 0;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const int difference =
                    installed.pixelColor(x, y).alpha() - own.pixelColor(x, y).alpha();
                different += std::abs(difference) > kVisible ? 1 : 0;
            }
        }
        EXPECT_LT(different, kSide * kSide / 200) << enabled;
        EXPECT_GT(installed.pixelColor(kSide / 2, kSide / 2).alpha(), kVisible) << enabled;
    }
}

}  // namespace
}  // namespace kestrelbay
