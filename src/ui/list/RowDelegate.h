#pragma once

#include <functional>

#include <QAbstractItemDelegate>
#include <QList>
#include <QPersistentModelIndex>
#include <QWidget>

namespace kestrelbay {

/// A row of a RowListView. Made for one row, it then shows many, one after the other.
class RowWidget : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    virtual void setSelected(bool selected) = 0;
    /// Does it want every key just now, the arrows included?
    [[nodiscard]] virtual bool takesAllKeys() const { return false; }
    /// Nobody sees the row any more, though it may be kept for its focus. What goes on in it
    /// has to end. May be called again for the same row.
    virtual void leftView() {}

    /// What it shows; invalid while it waits to be used again.
    void setIndex(const QModelIndex &index) { index_ = index; }
    [[nodiscard]] QModelIndex index() const { return index_; }

    /// To be called once all controls are there. The list then sees their events, and Tab
    /// goes from it to them.
    void collectControls(QWidget *list);
    /// Those that take the keyboard, in the order of Tab.
    [[nodiscard]] const QList<QWidget *> &controls() const { return controls_; }
    /// Does Tab stop at them?
    void setTabStops(bool stops);

    /// What is seen of the row while it is dragged.
    [[nodiscard]] QPixmap dragPicture(bool isTranslucent);

    /// A row in use is never hidden by itself: views hide the editors that they close, and
    /// one that is used again at once would be painted twice.
    void setVisible(bool visible) override;

private:
    QPersistentModelIndex index_;
    QList<QWidget *> controls_;
};

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
        /// Can a window be seen through just now? Asked for each drag.
        std::function<bool()> isTranslucencyShown;
        /// In device-independent pixels.
        int height = 0;
        int spacing = 0;
    };

    RowDelegate(Rows rows, QWidget *list);

    [[nodiscard]] bool isTranslucencyShown() const { return rows_.isTranslucencyShown(); }

    /// From one row to the next.
    [[nodiscard]] int pitch() const { return rows_.height + rows_.spacing; }
    /// Where the widget lies within what the view takes for the row.
    [[nodiscard]] QRect rowRect(const QRect &rect) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override {
        return {0, pitch()};
    }
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
