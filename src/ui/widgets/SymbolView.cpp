#include "ui/widgets/SymbolView.h"

#include <algorithm>
#include <utility>

#include "ui/look/Drawing.h"
#include "ui/look/Symbols.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{22, 22};
constexpr qreal kButtonRadius = 5;
constexpr float kHoverGroundAlpha = 0.07F;
constexpr float kPressedGroundAlpha = 0.15F;
constexpr float kDisabledAlpha = 0.4F;

}  // namespace

SymbolView::SymbolView(QWidget *parent) : QWidget(parent), color_(colors::label) {
    installAccessible<SymbolView, AccessibleWithRole<QAccessible::Graphic>>();
}

void SymbolView::setSymbol(const QString &name, colors::Function color) {
    image_ = {};
    symbol_ = name;
    color_ = std::move(color);
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

SymbolButton::SymbolButton(QString symbol, QSize symbolSize, colors::Function color,
                           QWidget *parent)
    : PaintedButton(parent),
      symbol_(std::move(symbol)),
      symbolSize_(symbolSize),
      color_(std::move(color)) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
}

QSize SymbolButton::sizeHint() const {
    return kSize;
}

void SymbolButton::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isEnabled() && (isDown() || underMouse()))
        drawRounded(painter, rect(), kButtonRadius,
                    withAlpha(colors::label(), isDown() ? kPressedGroundAlpha : kHoverGroundAlpha));
    QRect place(QPoint(), symbolSize_);
    place.moveCenter(rect().center());
    painter.setOpacity(isEnabled() ? 1 : kDisabledAlpha);
    painter.drawPixmap(place, symbolPixmap(symbol_, symbolSize_, color_(), devicePixelRatioF()));
    painter.setOpacity(1);
    drawFocusRing(painter, *this);
}

}  // namespace kestrelbay
