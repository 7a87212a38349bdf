#include "ui/list/RowDropTarget.h"

#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>

#include <chrono>

#include "ui/list/DropLine.h"
#include "ui/list/RowDrag.h"
#include "ui/list/RowDrop.h"
#include "ui/list/RowTableSource.h"
#include "ui/list/RowTableView.h"

namespace kestrelbay {

namespace {

constexpr std::chrono::milliseconds kAutoscrollTick{16};

/// A program that lets go of what it moved would delete its text.
Qt::DropAction actionFor(const QDropEvent &event) {
    return qobject_cast<RowDrag *>(event.source()) ? Qt::MoveAction : Qt::CopyAction;
}

}  // namespace

RowDropTarget::RowDropTarget(RowTableView &table, RowTableSource &source, Timers &timers)
    : table_(table), source_(source), timers_(timers), line_(new DropLine(table.viewport())) {}

RowDropTarget::~RowDropTarget() = default;

void RowDropTarget::dragEntered(QDragMoveEvent *event) {
    dragMoved(event);
    // Whoever refuses to be entered is not told of the moves that follow.
    event->setAccepted(canTake(event));
}

void RowDropTarget::dragMoved(QDragMoveEvent *event) {
    if (!canTake(event)) {
        dragLeft();
        event->ignore();
        return;
    }
    y_ = event->position().toPoint().y();
    showLine();
    scrollNearEdges();
    event->setDropAction(actionFor(*event));
    event->setAccepted(isDropAccepted(proposedDrop(table_.rows(), *y_ + table_.offset())));
}

void RowDropTarget::dragLeft() {
    y_.reset();
    autoscrollTimer_.reset();
    line_->hide();
}

void RowDropTarget::dropped(QDropEvent *event) {
    dragLeft();
    const int y = event->position().toPoint().y() + table_.offset();
    const DropProposal proposal = proposedDrop(table_.rows(), y);
    event->ignore();
    if (!canTake(event) || !isDropAccepted(proposal))
        return;
    isDropping_ = true;
    const bool taken = source_.acceptDrop(event->mimeData()->text(), proposal.row);
    isDropping_ = false;
    if (!taken)
        return;
    event->setDropAction(actionFor(*event));
    event->accept();
}

void RowDropTarget::rowsScrolled() {
    if (y_)
        showLine();
}

bool RowDropTarget::canTake(QDropEvent *event) const {
    return event->mimeData()->hasFormat(QStringLiteral("text/plain")) &&
           event->possibleActions().testFlag(actionFor(*event));
}

void RowDropTarget::showLine() {
    const DropProposal proposal = proposedDrop(table_.rows(), *y_ + table_.offset());
    if (!isDropAccepted(proposal)) {
        line_->hide();
        return;
    }
    const auto [left, width] = table_.rowSpan();
    line_->showAt(table_.rows().gap(proposal.row) - table_.offset(), left, width);
}

void RowDropTarget::scrollNearEdges() {
    if (autoscrollStep(*y_, table_.viewport()->height()) == 0)
        autoscrollTimer_.reset();
    else if (!autoscrollTimer_)
        autoscrollTimer_ = timers_.every(kAutoscrollTick, [this] { autoscroll(); });
}

void RowDropTarget::autoscroll() {
    QScrollBar *const bar = table_.verticalScrollBar();
    bar->setValue(bar->value() + autoscrollStep(*y_, table_.viewport()->height()));
}

}  // namespace kestrelbay
