#pragma once

#include <memory>
#include <optional>

#include "tasks/Timers.h"

class QDragMoveEvent;
class QDropEvent;
class QPoint;

namespace kestrelbay {

class DropLine;
class RowTableSource;
class RowTableView;

/// What a drag does over a table: it shows where it would drop, scrolls near the
/// edges, and drops.
class RowDropTarget {
public:
    RowDropTarget(RowTableView &table, RowTableSource &source, Timers &timers);
    ~RowDropTarget();
    RowDropTarget(const RowDropTarget &) = delete;
    RowDropTarget &operator=(const RowDropTarget &) = delete;

    void dragEntered(QDragMoveEvent *event);
    void dragMoved(QDragMoveEvent *event);
    void dragLeft();
    void dropped(QDropEvent *event);

    /// Under a drag that does not move.
    void rowsScrolled();

    /// The source is taking a drop at this moment.
    [[nodiscard]] bool isDropping() const { return isDropping_; }

private:
    [[nodiscard]] bool canTake(QDropEvent *event) const;
    void showLine();
    void autoscroll();
    void scrollNearEdges();

    RowTableView &table_;
    RowTableSource &source_;
    Timers &timers_;
    DropLine *line_;
    std::unique_ptr<Timers::Timer> autoscrollTimer_;
    /// Of the drag over the viewport.
    std::optional<int> y_;
    bool isDropping_ = false;
};

}  // namespace kestrelbay
