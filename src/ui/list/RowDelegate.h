#pragma once

#include <functional>

#include <QAbstractItemDelegate>

namespace kestrelbay {

class RowWidget;

/// Where the rows of a RowListView come from, and where they lie: all of one height, with
/// the same space between them, half of which is above the first and below the last.
class RowDelegate final : public QAbstractItemDelegate {
    Q_OBJECT

public:
    struct Rows {
        /// A widget for any row; the parent owns it.
        std::function<RowWidget *(QWidget *parent)> make;
        /// Has the widget show this row and nothing of the one before.
        std::function<void(RowWidget *widget, int row)> fill;
        /// In device-independent pixels.
        int height = 0;
        int spacing = 0;
    };

    RowDelegate(Rows rows, QWidget *list);

    /// From one row to the next.
    [[nodiscard]] int pitch() const { return rows_.height + rows_.spacing; }
    /// Where the widget lies within what the view takes for the row.
    [[nodiscard]] QRect rowRect(const QRect &rect) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;
    [[nodiscard]] QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    QWidget *list_;
    Rows rows_;
};

}  // namespace kestrelbay
