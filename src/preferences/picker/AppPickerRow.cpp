#include "preferences/picker/AppPickerRow.h"

#include <QImage>
#include <QPainter>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kHeight = 36;
/// Before the icon, and after the name.
constexpr int kRowMargin = 4;
constexpr int kIconGap = 8;
constexpr qreal kSelectionRadius = 5;
constexpr int kFocusRingWidth = 2;

}  // namespace

void AppPickerRow::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    if (selected) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(colors::controlAccent());
        painter->drawRoundedRect(QRectF(option.rect), kSelectionRadius, kSelectionRadius);
    } else if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(QPen(colors::controlAccent(), kFocusRingWidth));
        painter->drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), kSelectionRadius,
                                 kSelectionRadius);
    }

    const QRect inner = option.rect.adjusted(kRowMargin, 0, -kRowMargin, 0);
    const QRect icon = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter,
                                           QSize(kIconSize, kIconSize), inner);
    painter->drawImage(icon, index.data(Qt::DecorationRole).value<QImage>());

    const QRect text =
        QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter,
                            QSize(inner.width() - kIconSize - kIconGap, inner.height()), inner);
    painter->setFont(option.font);
    painter->setPen(selected ? QColor(Qt::white) : colors::label());
    // A line break would push the name out of its row.
    const QString name = index.data(Qt::DisplayRole).toString().simplified();
    painter->drawText(text, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(name, Qt::ElideRight, text.width()));
    painter->restore();
}

QSize AppPickerRow::sizeHint(const QStyleOptionViewItem & /*option*/,
                             const QModelIndex & /*index*/) const {
    return {0, kHeight};
}

}  // namespace kestrelbay
