#pragma once

#include <QStyledItemDelegate>

namespace kestrelbay {

/// Paints one row of the app picker: the icon, then the name on one line.
class AppPickerRow final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Side of the icon in device-independent pixels.
    static constexpr int kIconSize = 24;

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;
};

}  // namespace kestrelbay
