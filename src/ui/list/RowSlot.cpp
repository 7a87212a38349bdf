#include "ui/list/RowSlot.h"

#include <QPainter>
#include <QPixmap>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr qreal kRingRadius = 8;
constexpr qreal kRingWidth = 2;
constexpr qreal kDragOpacity = 0.6;

}  // namespace

RowSlot::RowSlot(QWidget *viewport) : QWidget(viewport) {}

void RowSlot::setContent(QWidget *content) {
    content_ = content;
    content_->setParent(this);
    content_->setGeometry(rect());
    content_->show();
    for (QWidget *widget : content_->findChildren<QWidget *>()) {
        const Qt::FocusPolicy policy = widget->focusPolicy();
        if (!(policy & Qt::TabFocus) || widget->focusProxy())
            continue;
        // Rows are made in any order, and Tab would go through them in that order.
        widget->setFocusPolicy(Qt::ClickFocus);
        controls_.append(widget);
    }
}

QWidget *RowSlot::usableControl(qsizetype index) const {
    QWidget *const control = controls_.value(index);
    return control && control->isEnabled() && control->isVisibleTo(this) ? control : nullptr;
}

qsizetype RowSlot::focusedControl() const {
    const QWidget *focus = window()->focusWidget();
    for (; focus && focus != this; focus = focus->parentWidget()) {
        for (qsizetype i = 0; i < controls_.size(); ++i) {
            if (controls_[i] == focus)
                return i;
        }
    }
    return -1;
}

bool RowSlot::hasFocusInside() const {
    const QWidget *const focus = window()->focusWidget();
    return focus && isAncestorOf(focus);
}

QPixmap RowSlot::dragPicture() const {
    const QPixmap row = content_->grab();
    QPixmap picture(row.size());
    picture.setDevicePixelRatio(row.devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(kDragOpacity);
    painter.drawPixmap(0, 0, row);
    return picture;
}

void RowSlot::setFocusRing(bool shown) {
    if (hasFocusRing_ == shown)
        return;
    hasFocusRing_ = shown;
    update();
}

void RowSlot::paintEvent(QPaintEvent *) {
    if (!hasFocusRing_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors::controlAccent(), kRingWidth));
    const qreal inset = kRingWidth / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            kRingRadius - inset, kRingRadius - inset);
}

void RowSlot::resizeEvent(QResizeEvent *) {
    if (content_)
        content_->setGeometry(rect());
}

}  // namespace kestrelbay
