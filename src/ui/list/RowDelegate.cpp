#include "ui/list/RowDelegate.h"

#include <QPainter>

#include <utility>

#include "ui/list/RowWidget.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kRowInset = 10;
constexpr qreal kFocusRingRadius = 8;
constexpr qreal kFocusRingWidth = 2;

}  // namespace

RowDelegate::RowDelegate(Rows rows, QWidget *list)
    : QAbstractItemDelegate(list), list_(list), rows_(std::move(rows)) {}

QRect RowDelegate::rowRect(const QRect &rect) const {
    return {rect.left() + kRowInset, rect.top() + rows_.spacing / 2, rect.width() - 2 * kRowInset,
            rows_.height};
}

/// A ring tells that keys go to this row; all else is the widget's.
void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &) const {
    if (!option.state.testFlag(QStyle::State_HasFocus))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colors::controlAccent(), kFocusRingWidth));
    const qreal inset = kFocusRingWidth / 2;
    painter->drawRoundedRect(QRectF(rowRect(option.rect)).adjusted(inset, inset, -inset, -inset),
                             kFocusRingRadius - inset, kFocusRingRadius - inset);
    painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const {
    return {0, pitch()};
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
