#include "ui/widgets/SymbolView.h"

#include <algorithm>

#include <QPainter>

#include "ui/look/Symbols.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

SymbolView::SymbolView(QWidget *parent) : QWidget(parent), color_(colors::label) {
    installAccessible<SymbolView, AccessibleWithRole<QAccessible::Graphic>>();
}

void SymbolView::setSymbol(const QString &name, colors::Function color) {
    image_ = {};
    symbol_ = name;
    color_ = color;
    update();
}

void SymbolView::setImage(const QImage &image) {
    image_ = image;
    update();
}

void SymbolView::paintEvent(QPaintEvent * /*event*/) {
    const int side = std::min(width(), height());
    const QRect place(QPoint((width() - side) / 2, (height() - side) / 2), QSize(side, side));
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (image_.isNull())
        painter.drawPixmap(place,
                           symbolPixmap(symbol_, place.size(), color_(), devicePixelRatioF()));
    else
        painter.drawImage(place, image_);
}

}  // namespace kestrelbay
