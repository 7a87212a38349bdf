#pragma once

#include <utility>

#include <QAbstractScrollArea>
#include <QPoint>
#include <QPointer>

#include <optional>

#include "ui/list/RowDrag.h"
#include "ui/list/RowDropTarget.h"
#include "ui/list/RowGeometry.h"
#include "ui/list/RowSlots.h"

namespace kestrelbay {

class RowSlot;
class RowTableSource;
class Timers;

/// A list of equal rows, at most one of them selected, with widgets for those on screen
/// only. Rows can be dragged to another place.
///
/// Up, Down, Home, End, Page Up and Page Down select, also from a control in a row;
/// Alt+Up and Alt+Down move the selected row; Return opens it. Tab goes from the list
/// through the controls of the selected row and then on.
class RowTableView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    static constexpr int kNoRow = -1;

    /// Both have to outlive the view. It asks for no row before the first reload().
    RowTableView(RowTableSource &source, Timers &timers, int rowHeight, int spacing,
                 QWidget *parent = nullptr);
    ~RowTableView() override;

    /// Takes over the list as it is now. The offset, the selected index and the focus
    /// stay as far as the list still has rows for them; a drag that is under way ends.
    void reload();

    [[nodiscard]] int selectedRow() const { return selectedRow_; }
    /// Anything outside the list means none.
    void selectRow(int row);
    void scrollToRow(int row);

    /// The row's widget as the source made it; null for a row without one.
    [[nodiscard]] QWidget *rowWidget(int row) const;
    [[nodiscard]] RowSlot *slot(int row) const { return slots_.slot(row); }

    [[nodiscard]] const RowTableSource &source() const { return source_; }
    [[nodiscard]] const RowGeometry &rows() const { return rows_; }
    /// How far the list is scrolled.
    [[nodiscard]] int offset() const;
    /// Left edge and width of the rows in the viewport.
    [[nodiscard]] std::pair<int, int> rowSpan() const;

    /// The row under way; null when none is.
    [[nodiscard]] RowDrag *drag() const { return drag_.data(); }
    [[nodiscard]] bool isDragging() const { return !drag_.isNull(); }

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// A double-click, wherever in the list, or Return.
    void activated();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    /// Is at least a part of the row seen?
    [[nodiscard]] bool isInSight(int row) const;
    void layoutRows();
    void updateScrollBar();
    void watchControlsOf(RowSlot *slot);
    void focusChanged(QWidget *now);
    void selectByKey(int row);
    [[nodiscard]] std::optional<int> rowForKey(int key) const;
    void moveSelectedRow(int distance);
    [[nodiscard]] bool focusControl(qsizetype from, int step);
    [[nodiscard]] bool focusBeside(bool next);
    void announceSelection();

    RowTableSource &source_;
    RowGeometry rows_;
    RowSlots slots_;
    RowDropTarget dropTarget_;
    QPointer<RowDrag> drag_;
    int selectedRow_ = kNoRow;
    std::optional<QPoint> pressed_;
};

}  // namespace kestrelbay
