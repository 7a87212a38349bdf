#include "ui/list/DropLine.h"

#include <QPainter>

#include <algorithm>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kHeight = 10;
constexpr qreal kThickness = 2;
constexpr qreal kEndRadius = 3;

}  // namespace

DropLine::DropLine(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropLine::showAt(int y, int left, int width) {
    const int lowest = std::max(0, parentWidget()->height() - kHeight);
    setGeometry(left, std::clamp(y - kHeight / 2, 0, lowest), width, kHeight);
    raise();
    show();
}

void DropLine::paintEvent(QPaintEvent *) {
    const qreal middle = kHeight / 2.0;
    const qreal ringEnd = kThickness / 2 + 2 * kEndRadius;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors::controlAccent(), kThickness, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(kThickness / 2 + kEndRadius, middle), kEndRadius, kEndRadius);
    painter.drawLine(QPointF(ringEnd, middle), QPointF(width() - kThickness / 2, middle));
}

}  // namespace kestrelbay
