#include "ui/list/RowWidget.h"

#include <QPainter>
#include <QPixmap>

namespace kestrelbay {

namespace {

constexpr qreal kDragPictureOpacity = 0.6;

}  // namespace

void RowWidget::collectControls(QWidget *list) {
    for (QWidget *widget : findChildren<QWidget *>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy())
            continue;
        widget->installEventFilter(list);
        setTabOrder(controls_.isEmpty() ? list : controls_.last(), widget);
        controls_.append(widget);
    }
}

void RowWidget::setTabStops(bool stops) {
    for (QWidget *control : std::as_const(controls_))
        control->setFocusPolicy(stops ? Qt::StrongFocus : Qt::ClickFocus);
}

void RowWidget::setVisible(bool visible) {
    if (visible || !index_.isValid())
        QWidget::setVisible(visible);
}

QPixmap RowWidget::dragPicture() {
    const QPixmap row = grab();
    QPixmap picture(row.size());
    picture.setDevicePixelRatio(row.devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(kDragPictureOpacity);
    painter.drawPixmap(0, 0, row);
    return picture;
}

}  // namespace kestrelbay
