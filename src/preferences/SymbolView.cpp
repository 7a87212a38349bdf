#include "preferences/SymbolView.h"

#include <QPainter>

#include <algorithm>

#include "app/IconImage.h"
#include "app/Symbols.h"
#include "app/SystemColors.h"

namespace kestrelbay {

SymbolView::SymbolView(QWidget *parent) : QWidget(parent), color_(colors::label) {}

void SymbolView::setSymbol(const QString &name, Color color) {
    icon_ = {};
    symbol_ = name;
    color_ = color;
    update();
}

void SymbolView::setIcon(const QIcon &icon) {
    icon_ = icon;
    update();
}

void SymbolView::paintEvent(QPaintEvent * /*event*/) {
    const int side = std::min(width(), height());
    const QRect place(QPoint((width() - side) / 2, (height() - side) / 2), QSize(side, side));
    QPainter painter(this);
    if (icon_.isNull())
        painter.drawPixmap(place,
                           symbolPixmap(symbol_, place.size(), color_(), devicePixelRatioF()));
    else
        painter.drawImage(place, iconImage(icon_, qRound(side * devicePixelRatioF())));
}

}  // namespace kestrelbay
