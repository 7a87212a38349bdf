#pragma once

#include <functional>
#include <map>
#include <vector>

#include "ui/list/RowGeometry.h"

class QWidget;

namespace kestrelbay {

class RowSlot;
class RowTableSource;

/// The slots of the rows on screen, used again for others as the list scrolls, so that
/// a list costs what a screenful costs. The row that has the keyboard keeps its slot out
/// of sight too, and with it the focus.
class RowSlots {
public:
    /// `made` is told of each new slot.
    RowSlots(RowTableSource &source, QWidget *viewport, std::function<void(RowSlot *)> made);

    /// Has slots for these rows and no others.
    void show(RowGeometry::Range rows);
    /// Fills every slot again.
    void configureAll();
    void place(const RowGeometry &rows, int offset, int left, int width);
    void setSelectedRow(int row);
    /// Do keys go to the selected row as a whole?
    void setFocused(bool focused);

    /// Null when the row has none.
    [[nodiscard]] RowSlot *slot(int row) const;
    /// The one of the row that has the keyboard; null when none has.
    [[nodiscard]] RowSlot *focusedSlot() const;

private:
    void release(RowGeometry::Range rows);
    [[nodiscard]] RowSlot *take();
    void showSelection(RowSlot *slot);
    void fill(RowSlot *slot, int row);

    RowTableSource &source_;
    QWidget *viewport_;
    std::function<void(RowSlot *)> made_;
    std::map<int, RowSlot *> shown_;
    std::vector<RowSlot *> free_;
    int selectedRow_ = -1;
    bool isFocused_ = false;
};

}  // namespace kestrelbay
