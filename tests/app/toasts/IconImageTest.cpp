#include "app/toasts/IconImage.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QPixmap>

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

QIcon pixmapIcon(const QSize &size) {
    return QPixmap::fromImage(plain(size, Qt::red));
}

TEST(IconImageTest, PictureOfTheRightSizeIsTakenAsItIs) {
    const QImage image = iconImage(pixmapIcon({72, 72}), 72);
    EXPECT_EQ(image, plain({72, 72}, Qt::red));
}

TEST(IconImageTest, SmallPictureIsScaledUp) {
    EXPECT_EQ(drawnPart(iconImage(pixmapIcon({16, 16}), 72)), QRect(0, 0, 72, 72));
}

TEST(IconImageTest, LargePictureIsScaledDown) {
    EXPECT_EQ(drawnPart(iconImage(pixmapIcon({512, 512}), 72)), QRect(0, 0, 72, 72));
}

TEST(IconImageTest, ProportionsAreKeptAndThePictureIsCentred) {
    EXPECT_EQ(drawnPart(iconImage(pixmapIcon({20, 10}), 72)), QRect(0, 18, 72, 36));
    EXPECT_EQ(drawnPart(iconImage(pixmapIcon({100, 200}), 72)), QRect(18, 0, 36, 72));
}

TEST(IconImageTest, TheLargestOfSmallPicturesIsScaledUp) {
    QIcon icon(QPixmap::fromImage(plain({16, 16}, Qt::red)));
    icon.addPixmap(QPixmap::fromImage(plain({48, 48}, Qt::blue)));
    icon.addPixmap(QPixmap::fromImage(plain({32, 32}, Qt::red)));
    EXPECT_EQ(iconImage(icon, 72).pixelColor(36, 36), QColor(Qt::blue));
}

TEST(IconImageTest, NoIconGivesAnEmptySquare) {
    const QImage image = iconImage(QIcon(), 72);
    EXPECT_EQ(image.size(), QSize(72, 72));
    EXPECT_TRUE(drawnPart(image).isEmpty());
}

TEST(IconImageTest, IconOfAnImageDrawsTheImage) {
    const QImage image = plain({72, 72}, Qt::green);
    const QIcon icon = iconOfImage(image);
    EXPECT_FALSE(icon.isNull());
    EXPECT_EQ(iconImage(icon, 72), image);
    EXPECT_EQ(icon.pixmap(QSize(72, 72), 1.0).toImage().pixelColor(36, 36), QColor(Qt::green));
    EXPECT_EQ(drawnPart(iconImage(icon, 144)), QRect(0, 0, 144, 144));
}

}  // namespace

}  // namespace kestrelbay
