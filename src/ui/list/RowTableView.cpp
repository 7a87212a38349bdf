#include "ui/list/RowTableView.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

#include "ui/list/RowDrop.h"
#include "ui/list/RowSlot.h"
#include "ui/list/RowTableAccessible.h"
#include "ui/list/RowTableSource.h"

namespace kestrelbay {

namespace {

constexpr int kSideInset = 10;

bool isArrow(const QKeyEvent &event) {
    return event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
}

Qt::KeyboardModifiers modifiersOf(const QKeyEvent &event) {
    return event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
}

}  // namespace

RowTableView::RowTableView(RowTableSource &source, Timers &timers, int rowHeight, int spacing,
                           QWidget *parent)
    : QAbstractScrollArea(parent),
      source_(source),
      rows_{.rowHeight = rowHeight, .spacing = spacing, .count = 0},
      slots_(source, viewport(), [this](RowSlot *slot) { watchControlsOf(slot); }),
      dropTarget_(*this, source, timers) {
    installRowTableAccessibility();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAcceptDrops(true);
    // An opaque ground, so that scrolling moves what is painted already.
    viewport()->setBackgroundRole(QPalette::Window);
    verticalScrollBar()->setSingleStep(rows_.pitch() / 2);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { focusChanged(now); });
}

RowTableView::~RowTableView() {
    // The focus goes elsewhere while the widget ends, when this is no table any more.
    disconnect(qApp, nullptr, this, nullptr);
    if (drag_)
        drag_->cancel();
}

void RowTableView::reload() {
    if (drag_ && !dropTarget_.isDropping())
        drag_->cancel();
    pressed_.reset();
    rows_.count = source_.rowCount();
    if (const RowSlot *focused = slots_.focusedSlot(); focused && focused->row() >= rows_.count)
        setFocus();
    selectRow(std::min(selectedRow_, rows_.count - 1));
    updateScrollBar();
    layoutRows();
    slots_.configureAll();
    if (QAccessible::isActive()) {
        QAccessibleEvent reordered(this, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&reordered);
    }
}

void RowTableView::selectRow(int row) {
    const int selected = row >= 0 && row < rows_.count ? row : kNoRow;
    if (selected == selectedRow_)
        return;
    selectedRow_ = selected;
    slots_.setSelectedRow(selected);
    announceSelection();
}

void RowTableView::scrollToRow(int row) {
    if (row < 0 || row >= rows_.count)
        return;
    verticalScrollBar()->setValue(rows_.offsetShowing(row, offset(), viewport()->height()));
}

QWidget *RowTableView::rowWidget(int row) const {
    const RowSlot *const slot = slots_.slot(row);
    return slot ? slot->content() : nullptr;
}

int RowTableView::offset() const {
    return verticalScrollBar()->value();
}

std::pair<int, int> RowTableView::rowSpan() const {
    return {kSideInset, viewport()->width() - 2 * kSideInset};
}

QSize RowTableView::sizeHint() const {
    return {600, 8 * rows_.pitch()};
}

bool RowTableView::isInSight(int row) const {
    return rows_.rowsBetween(offset(), offset() + viewport()->height()).contains(row);
}

void RowTableView::layoutRows() {
    slots_.show(rows_.rowsBetween(offset(), offset() + viewport()->height()));
    const auto [left, width] = rowSpan();
    slots_.place(rows_, offset(), left, width);
}

void RowTableView::updateScrollBar() {
    const int height = viewport()->height();
    verticalScrollBar()->setPageStep(height);
    verticalScrollBar()->setRange(0, std::max(0, rows_.contentHeight() - height));
}

void RowTableView::resizeEvent(QResizeEvent *) {
    updateScrollBar();
    layoutRows();
}

void RowTableView::scrollContentsBy(int dx, int dy) {
    viewport()->scroll(dx, dy);
    layoutRows();
    dropTarget_.rowsScrolled();
}

void RowTableView::watchControlsOf(RowSlot *slot) {
    for (QWidget *control : slot->controls())
        control->installEventFilter(this);
}

bool RowTableView::eventFilter(QObject *watched, QEvent *event) {
    // A button would take the arrows for Tab.
    if (event->type() == QEvent::KeyPress) {
        auto *const key = static_cast<QKeyEvent *>(event);
        const RowSlot *const slot = slots_.focusedSlot();
        if (slot && !source_.rowTakesAllKeys(slot->content())) {
            if (isArrow(*key)) {
                keyPressEvent(key);
                return key->isAccepted();
            }
            // Nobody would see what the key does.
            if (!isInSight(slot->row()))
                scrollToRow(slot->row());
        }
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

void RowTableView::keyPressEvent(QKeyEvent *event) {
    const RowSlot *const slot = slots_.focusedSlot();
    event->ignore();
    if (slot && source_.rowTakesAllKeys(slot->content()))
        return;
    const Qt::KeyboardModifiers modifiers = modifiersOf(*event);
    if (modifiers == Qt::AltModifier && isArrow(*event)) {
        moveSelectedRow(event->key() == Qt::Key_Up ? -1 : 1);
        event->accept();
        return;
    }
    if (modifiers != Qt::NoModifier)
        return;
    if (const auto row = rowForKey(event->key())) {
        selectByKey(*row);
        event->accept();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && hasFocus()) {
        event->accept();
        Q_EMIT activated();
    }
}

std::optional<int> RowTableView::rowForKey(int key) const {
    const int page = rows_.rowsOfPage(viewport()->height());
    const int last = rows_.count - 1;
    const bool isNone = selectedRow_ == kNoRow;
    switch (key) {
        case Qt::Key_Up:
            return isNone ? last : selectedRow_ - 1;
        case Qt::Key_Down:
            return selectedRow_ + 1;
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return last;
        case Qt::Key_PageUp:
            return isNone ? last : selectedRow_ - page;
        case Qt::Key_PageDown:
            return selectedRow_ + page;
        default:
            return std::nullopt;
    }
}

void RowTableView::selectByKey(int row) {
    if (rows_.count == 0)
        return;
    const RowSlot *const before = slots_.focusedSlot();
    const qsizetype control = before ? before->focusedControl() : -1;
    const int selected = std::clamp(row, 0, rows_.count - 1);
    scrollToRow(selected);
    selectRow(selected);
    if (before && !focusControl(control, 0))
        setFocus();
}

void RowTableView::moveSelectedRow(int distance) {
    const int destination = selectedRow_ + distance;
    if (selectedRow_ == kNoRow || destination < 0 || destination >= rows_.count)
        return;
    const RowSlot *const before = slots_.focusedSlot();
    const qsizetype control = before ? before->focusedControl() : -1;
    source_.moveRow(selectedRow_, destination);
    selectByKey(destination);
    if (before && !focusControl(control, 0))
        setFocus();
}

bool RowTableView::focusControl(qsizetype from, int step) {
    const RowSlot *const slot = slots_.slot(selectedRow_);
    if (!slot)
        return false;
    for (qsizetype i = from; i >= 0 && i < slot->controls().size(); i += step) {
        if (QWidget *const control = slot->usableControl(i)) {
            control->setFocus(step < 0 ? Qt::BacktabFocusReason : Qt::TabFocusReason);
            return true;
        }
        if (step == 0)
            break;
    }
    return false;
}

bool RowTableView::focusNextPrevChild(bool next) {
    const RowSlot *const slot = slots_.focusedSlot();
    const qsizetype control = slot ? slot->focusedControl() : -1;
    if (next) {
        if (!slot)
            scrollToRow(selectedRow_);
        return focusControl(control + 1, 1) || focusBeside(true);
    }
    if (!slot)
        return focusBeside(false);
    if (!focusControl(control - 1, -1))
        setFocus(Qt::BacktabFocusReason);
    return true;
}

bool RowTableView::focusBeside(bool next) {
    const auto follow = [next](QWidget *widget) {
        return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget *widget = follow(this); widget != this; widget = follow(widget)) {
        if (widget->window() != window() || isAncestorOf(widget) || widget->focusProxy() ||
            !(widget->focusPolicy() & Qt::TabFocus) || !widget->isEnabled() || !widget->isVisible())
            continue;
        widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

void RowTableView::focusInEvent(QFocusEvent *event) {
    const bool isByTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByTab && selectedRow_ == kNoRow)
        selectRow(rows_.rowAt(offset()).value_or(kNoRow));
    QAbstractScrollArea::focusInEvent(event);
    slots_.setFocused(true);
    announceSelection();
}

void RowTableView::focusOutEvent(QFocusEvent *event) {
    QAbstractScrollArea::focusOutEvent(event);
    slots_.setFocused(false);
}

void RowTableView::focusChanged(QWidget *now) {
    if (!now || !viewport()->isAncestorOf(now))
        return;
    const RowSlot *const slot = slots_.focusedSlot();
    if (!slot || slot->row() == selectedRow_)
        return;
    const int row = slot->row();
    selectRow(row);
    // Under a pressed mouse button its target has to stay where it is.
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
        scrollToRow(row);
}

void RowTableView::mousePressEvent(QMouseEvent *event) {
    pressed_.reset();
    if (event->button() != Qt::LeftButton)
        return;
    const auto row = rows_.rowAt(event->position().toPoint().y() + offset());
    // Beside the rows the selection stays: a double-click there opens it.
    if (!row)
        return;
    selectRow(*row);
    pressed_ = event->position().toPoint();
}

void RowTableView::mouseMoveEvent(QMouseEvent *event) {
    if (!pressed_ || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint way = event->position().toPoint() - *pressed_;
    RowSlot *const slot = slots_.slot(selectedRow_);
    if (way.manhattanLength() < QApplication::startDragDistance() || !slot || drag_)
        return;
    drag_ = RowDrag::start(textOfDraggedRow(selectedRow_), slot->dragPicture(),
                           *pressed_ - slot->pos());
    pressed_.reset();
}

void RowTableView::mouseReleaseEvent(QMouseEvent *) {
    pressed_.reset();
}

void RowTableView::mouseDoubleClickEvent(QMouseEvent *event) {
    pressed_.reset();
    if (event->button() == Qt::LeftButton)
        Q_EMIT activated();
}

void RowTableView::dragEnterEvent(QDragEnterEvent *event) {
    dropTarget_.dragEntered(event);
}

void RowTableView::dragMoveEvent(QDragMoveEvent *event) {
    dropTarget_.dragMoved(event);
}

void RowTableView::dragLeaveEvent(QDragLeaveEvent *) {
    dropTarget_.dragLeft();
}

void RowTableView::dropEvent(QDropEvent *event) {
    dropTarget_.dropped(event);
}

void RowTableView::announceSelection() {
    RowSlot *const slot = slots_.slot(selectedRow_);
    if (!slot || !QAccessible::isActive())
        return;
    QAccessibleEvent selected(slot, QAccessible::Selection);
    QAccessible::updateAccessibility(&selected);
    if (!hasFocus())
        return;
    QAccessibleEvent focused(slot, QAccessible::Focus);
    QAccessible::updateAccessibility(&focused);
}

}  // namespace kestrelbay
