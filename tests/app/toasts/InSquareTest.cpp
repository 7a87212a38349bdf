#include "app/toasts/LaunchToastWindow.h"

#include <gtest/gtest.h>

#include <QImage>

#include "fixtures/QtPrinters.h"

namespace kestrelbay {

namespace {

QImage plain(const QSize &size, const QColor &color) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// The part of an image that is not transparent.
QRect drawnPart(const QImage &image) {
    QRect part;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                part |= QRect(x, y, 1, 1);
        }
    }
    return part;
}

TEST(InSquareTest, PictureOfTheRightSizeIsTakenAsItIs) {
    const QImage image = inSquare(plain({72, 72}, Qt::red), 72);
    EXPECT_EQ(image, plain({72, 72}, Qt::red));
}

TEST(InSquareTest, SmallPictureIsScaledUp) {
    EXPECT_EQ(drawnPart(inSquare(plain({16, 16}, Qt::red), 72)), QRect(0, 0, 72, 72));
}

TEST(InSquareTest, LargePictureIsScaledDown) {
    EXPECT_EQ(drawnPart(inSquare(plain({512, 512}, Qt::red), 72)), QRect(0, 0, 72, 72));
}

TEST(InSquareTest, ProportionsAreKeptAndThePictureIsCentred) {
    EXPECT_EQ(drawnPart(inSquare(plain({20, 10}, Qt::red), 72)), QRect(0, 18, 72, 36));
    EXPECT_EQ(drawnPart(inSquare(plain({100, 200}, Qt::red), 72)), QRect(18, 0, 36, 72));
}

TEST(InSquareTest, NoPictureGivesAnEmptySquare) {
    const QImage image = inSquare(QImage(), 72);
    EXPECT_EQ(image.size(), QSize(72, 72));
    EXPECT_TRUE(drawnPart(image).isEmpty());
}

}  // namespace

}  // namespace kestrelbay
