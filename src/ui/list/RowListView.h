#pragma once

#include <memory>
#include <optional>

#include <QDrag>
#include <QListView>
#include <QPointer>

#include "tasks/Timers.h"
#include "ui/list/RowDelegate.h"

namespace kestrelbay {

class DropLine;
class RowWidget;

/// A list of equal rows, at most one of them selected, with widgets for those on screen
/// only. What the model is told of a drop or of a move, it may do or not.
///
/// Up, Down, Home, End, Page Up and Page Down select, also from a control in a row;
/// Alt+Up and Alt+Down move the selected row. Tab goes from the list through the controls of
/// the selected row and then on. A double-click, wherever in the list, or Return activates
/// the selected row.
class RowListView final : public QListView {
    Q_OBJECT

public:
    static constexpr int kNoRow = -1;

    /// The model and the timers have to outlive the view. With dataChanged() the model ends
    /// each change of its rows; their number changes at the end of the list only.
    RowListView(QAbstractItemModel &model, RowDelegate::Rows rows, Timers &timers,
                QWidget *parent = nullptr);
    ~RowListView() override;

    [[nodiscard]] int selectedRow() const { return currentIndex().row(); }
    /// Anything outside the list means none.
    void selectRow(int row) { setCurrentIndex(indexOf(row)); }
    void scrollToRow(int row) { scrollTo(indexOf(row)); }
    /// Null for a row out of sight.
    [[nodiscard]] RowWidget *rowWidget(int row) const;

    [[nodiscard]] int pitch() const { return rows_->pitch(); }
    /// menuRequested() for the selected row, as with the menu key.
    void requestMenu();

    /// How far the list is scrolled.
    [[nodiscard]] int offset() const { return verticalOffset(); }

    /// The row under way; null when none is.
    [[nodiscard]] QDrag *drag() const { return drag_.data(); }

Q_SIGNALS:
    /// The user wants the menu of this row, which is selected by now, or of the list where there
    /// is none (kNoRow); at a place on the screen.
    void menuRequested(const QPoint &place, int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *) override { pressed_.reset(); }
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *) override { endDrop(); }
    void dropEvent(QDropEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;
    /// Getting the focus would choose a row by this.
    QModelIndex moveCursor(CursorAction, Qt::KeyboardModifiers) override { return {}; }

private:
    /// From now on screen readers see every such view as a list of all its rows, those out of
    /// sight included. A row is named by the model's Qt::AccessibleTextRole; the controls of
    /// one in sight are below it.
    static void installAccessibility();
    [[nodiscard]] QModelIndex indexOf(int row) const { return model()->index(row, 0); }
    [[nodiscard]] int rowCount() const { return model()->rowCount(); }
    [[nodiscard]] std::optional<int> rowForKey(int key) const;
    /// The one that has the keyboard; null when none has.
    [[nodiscard]] RowWidget *focusedRow() const;
    void takeOver();
    void showRows();
    void focusChanged(QWidget *now);
    void updateTabStops();
    void goToRow(int row);
    void moveSelectedRow(int distance);
    void startRowDrag(RowWidget *row);
    void cancelDrag();
    [[nodiscard]] Qt::DropAction dropAction() const;
    [[nodiscard]] bool canTake(const QDropEvent &event) const;
    [[nodiscard]] std::optional<int> gapAtY(int y) const;
    void autoscroll();
    void showDropLine();
    void endDrop();

    Timers &timers_;
    RowDelegate *rows_;
    DropLine *dropLine_;
    /// Of the drag over the list.
    std::optional<int> dragY_;
    std::unique_ptr<Timers::Timer> autoscrollTimer_;
    QPointer<QDrag> drag_;
    std::optional<QPoint> pressed_;
    bool isDropping_ = false;
    bool hasFocusInside_ = false;
};

}  // namespace kestrelbay
