#include "app/toasts/IconImage.h"

#include <algorithm>
#include <utility>

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

namespace kestrelbay {

namespace {

/// An image rather than a pixmap, which belongs to the GUI thread on some systems.
class ImageIconEngine final : public QIconEngine {
public:
    explicit ImageIconEngine(QImage image) : image_(std::move(image)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override {
        if (image_.isNull())
            return;
        QRectF target(QPointF(), QSizeF(image_.size()).scaled(rect.size(), Qt::KeepAspectRatio));
        target.moveCenter(QRectF(rect).center());
        const QPainter::RenderHints hints = painter->renderHints();
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(target, image_);
        painter->setRenderHints(hints);
    }
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new ImageIconEngine(image_); }
    [[nodiscard]] bool isNull() override { return image_.isNull(); }

private:
    QImage image_;
};

QImage painted(const QIcon &icon, const QSize &size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
}

/// The largest picture of an icon all of whose pictures are smaller than the square;
/// painting would not enlarge it.
QSize tooSmall(const QIcon &icon, int side) {
    QSize largest;
    for (const QSize &size : icon.availableSizes()) {
        if (size.width() >= side || size.height() >= side)
            return {};
        if (size.width() * size.height() > largest.width() * largest.height())
            largest = size;
    }
    return largest;
}

}  // namespace

QImage iconImage(const QIcon &icon, int side) {
    const QSize square(side, side);
    const QSize small = tooSmall(icon, side);
    return painted(small.isEmpty() ? icon : iconOfImage(painted(icon, small)), square);
}

QIcon iconOfImage(const QImage &image) {
    return QIcon(new ImageIconEngine(image));  // the icon takes the engine over
}

}  // namespace kestrelbay
