#pragma once

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

    /// What is seen of the row while it is dragged: translucent, so that it does not hide
    /// where it would be dropped.
    [[nodiscard]] QPixmap dragPicture();

    /// A row in use is never hidden by itself: views hide the editors that they close, and
    /// one that is used again at once would be painted twice.
    void setVisible(bool visible) override;

private:
    QPersistentModelIndex index_;
    QList<QWidget *> controls_;
};

}  // namespace kestrelbay
