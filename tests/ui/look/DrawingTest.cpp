#include "ui/look/Drawing.h"

#include <gtest/gtest.h>

#include <functional>

#include <QImage>

#include "fixtures/QtPrinters.h"

namespace kestrelbay {

namespace {

QImage drawn(qreal scale, const std::function<void(QPainter &)> &draw) {
    QImage image(QSizeF(120 * scale, 80 * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::lightGray);
    QPainter painter(&image);
    painter.translate(3, 5);  // as a widget that is not at the corner of its window
    draw(painter);
    return image;
}

/// What drawRounded() does in strips, at once.
void drawAtOnce(QPainter &painter, const QRectF &rect, qreal radius, const QBrush &ground,
                const QPen &outline) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outline);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect, radius, radius);
}

// Scales at which strips end between pixels, and one at which they would not.
constexpr qreal kScales[] = {1, 1.1, 1.25, 1.5, 1.75, 2};

TEST(DrawRounded, NoSeamIsSeen) {
    const QColor translucent(200, 30, 60, 90);
    const QRectF rects[] = {
        {0, 0, 100, 60}, {0.5, 0.5, 99, 23}, {2, 3, 38, 22}, {1.5, 7.5, 15, 15}, {0, 0, 30, 5}};
    for (const qreal scale : kScales) {
        for (const QRectF &rect : rects) {
            for (const QPen &outline : {QPen(Qt::NoPen), QPen(translucent), QPen(Qt::blue, 3)}) {
                const QImage inStrips = drawn(scale, [&](QPainter &painter) {
                    drawRounded(painter, rect, 6, translucent, outline);
                });
                const QImage atOnce = drawn(scale, [&](QPainter &painter) {
                    drawAtOnce(painter, rect, 6, translucent, outline);
                });
                EXPECT_EQ(inStrips, atOnce)
                    << scale << " " << rect.height() << " " << outline.widthF();
            }
        }
    }
}

TEST(DrawRounded, LeavesThePainterAsItWas) {
    drawn(1, [](QPainter &painter) {
        painter.setClipRect(10, 10, 50, 50);
        painter.setPen(Qt::red);
        drawRounded(painter, {0, 0, 100, 60}, 6, Qt::green);
        EXPECT_EQ(painter.clipBoundingRect(), QRectF(10, 10, 50, 50));
        EXPECT_EQ(painter.pen(), QPen(Qt::red));
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    });
}

TEST(DrawRounded, KeepsWithinTheClip) {
    const QImage image = drawn(1, [](QPainter &painter) {
        painter.setClipRect(0, 0, 50, 20);
        drawRounded(painter, {0, 0, 100, 60}, 6, Qt::green);
    });
    EXPECT_EQ(image.pixelColor(3 + 25, 5 + 10), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(3 + 25, 5 + 21), QColor(Qt::lightGray));
    EXPECT_EQ(image.pixelColor(3 + 51, 5 + 10), QColor(Qt::lightGray));
}

}  // namespace

}  // namespace kestrelbay
