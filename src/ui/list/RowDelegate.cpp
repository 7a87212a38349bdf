#include "ui/list/RowDelegate.h"

#include <QPixmap>

#include <utility>

#include "ui/look/Drawing.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kRowInset = 10;
constexpr qreal kFocusRingRadius = 8;
constexpr qreal kFocusRingWidth = 2;
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

QPixmap RowWidget::dragPicture(bool isTranslucent) {
    QPixmap row = grab();
    if (!isTranslucent) {
        QPainter frame(&row);
        frame.setPen(colors::separator());
        frame.drawRect(rect().adjusted(0, 0, -1, -1));
        return row;
    }
    QPixmap picture(row.size());
    picture.setDevicePixelRatio(row.devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(kDragPictureOpacity);
    painter.drawPixmap(0, 0, row);
    return picture;
}

RowDelegate::RowDelegate(Rows rows, QWidget *list)
    : QAbstractItemDelegate(list), list_(list), rows_(std::move(rows)) {}

QRect RowDelegate::rowRect(const QRect &rect) const {
    return {rect.left() + kRowInset, rect.top() + rows_.spacing / 2, rect.width() - 2 * kRowInset,
            rows_.height};
}

/// A ring tells those who use keys that they go to this row; all else is the widget's.
void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &) const {
    if (!option.state.testFlag(QStyle::State_HasFocus) ||
        !option.state.testFlag(QStyle::State_KeyboardFocusChange))
        return;
    const qreal inset = kFocusRingWidth / 2;
    drawRounded(*painter, QRectF(rowRect(option.rect)).adjusted(inset, inset, -inset, -inset),
                kFocusRingRadius - inset, Qt::NoBrush, QPen(colors::focusRing(), kFocusRingWidth));
}

QWidget *RowDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                   const QModelIndex &) const {
    for (auto *row : parent->findChildren<RowWidget *>(Qt::FindDirectChildrenOnly)) {
        if (!row->index().isValid())
            return row;
    }
    RowWidget *const made = rows_.make(parent);
    made->collectControls(list_);
    return made;
}

void RowDelegate::destroyEditor(QWidget *editor, const QModelIndex &) const {
    auto *const row = static_cast<RowWidget *>(editor);
    row->leftView();
    row->setIndex({});
}

void RowDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const {
    auto *const row = static_cast<RowWidget *>(editor);
    row->setIndex(index);
    rows_.fill(row, index.row());
}

void RowDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                       const QModelIndex &) const {
    editor->setGeometry(rowRect(option.rect));
}

}  // namespace kestrelbay
