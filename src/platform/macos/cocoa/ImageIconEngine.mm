#include "platform/macos/cocoa/ImageIconEngine.h"

#include <QPainter>

#include "platform/macos/cocoa/NSImages.h"

namespace kestrelbay {

QPixmap ImageIconEngine::pixmap(const QSize &size, QIcon::Mode /*mode*/, QIcon::State /*state*/) {
    return QPixmap::fromImage(toQImage(image_.get(), size));
}

void ImageIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode /*mode*/,
                            QIcon::State /*state*/) {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawImage(rect, toQImage(image_.get(), rect.size() * ratio));
}

}  // namespace kestrelbay
