#include "app/onboarding/HeroImage.h"

#include <QPainter>

namespace kestrelbay {

HeroImage::HeroImage(const QString &name, QWidget *parent)
    : QWidget(parent), pixmap_(QStringLiteral(":/hero/%1.png").arg(name)) {
    setFixedSize(468, 200);
}

void HeroImage::paintEvent(QPaintEvent * /*event*/) {
    // The files have two pixels to a point. A label would scale them in steps.
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), pixmap_);
}

}  // namespace kestrelbay
