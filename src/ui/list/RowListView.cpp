#include "ui/list/RowListView.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/list/RowDrop.h"

namespace kestrelbay {

namespace {

constexpr std::chrono::milliseconds kAutoscrollInterval{16};
constexpr int kBesidePointer = 16;

bool isUpOrDown(const QKeyEvent &event) {
    return event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
}

}  // namespace

RowListView::RowListView(QAbstractItemModel &model, RowDelegate::Rows rows, Timers &timers,
                         QWidget *parent)
    : QListView(parent),
      timers_(timers),
      rows_(new RowDelegate(std::move(rows), this)),
      dropLine_(new DropLine(viewport())) {
    installAccessibility();
    setItemDelegate(rows_);
    setModel(&model);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setAutoScroll(false);
    setFrameShape(QFrame::NoFrame);
    // The selected row has the ring.
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    verticalScrollBar()->setSingleStep(pitch() / 2);
    viewport()->setAcceptDrops(true);
    viewport()->setBackgroundRole(QPalette::Window);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &RowListView::takeOver);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &RowListView::takeOver);
    connect(&model, &QAbstractItemModel::dataChanged, this, &RowListView::takeOver);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { focusChanged(now); });
}

RowListView::~RowListView() {
    // The focus goes elsewhere while the widget ends, when this is no list any more.
    disconnect(qApp, nullptr, this, nullptr);
    cancelDrag();
}

RowWidget *RowListView::rowWidget(int row) const {
    return static_cast<RowWidget *>(indexWidget(indexOf(row)));
}

RowWidget *RowListView::focusedRow() const {
    // The window keeps it while a sheet has the keyboard.
    QWidget *widget = window()->focusWidget();
    while (widget && widget->parentWidget() != viewport())
        widget = widget->parentWidget();
    return qobject_cast<RowWidget *>(widget);
}

void RowListView::takeOver() {
    if (!isDropping_)
        cancelDrag();
    pressed_.reset();
    // Without rows there is nothing on which the list could show that it has the focus.
    setFocusPolicy(rowCount() == 0 ? Qt::NoFocus : Qt::StrongFocus);
    executeDelayedItemsLayout();
    showRows();
    if (QAccessible::isActive()) {
        QAccessibleEvent reordered(this, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&reordered);
    }
}

/// The row that has the keyboard keeps its widget out of sight too, and with it the focus.
void RowListView::showRows() {
    const int first = offset() / pitch();
    const int end = std::min((offset() + viewport()->height() + pitch() - 1) / pitch(), rowCount());
    for (auto *row : viewport()->findChildren<RowWidget *>(Qt::FindDirectChildrenOnly)) {
        const int at = row->index().row();
        if (at == kNoRow || (at >= first && at < end))
            continue;
        row->leftView();
        if (row != focusedRow())
            closePersistentEditor(row->index());
    }
    for (int at = first; at < end; ++at) {
        if (rowWidget(at))
            continue;
        openPersistentEditor(indexOf(at));
        rowWidget(at)->setSelected(at == selectedRow());
    }
    for (auto *row : viewport()->findChildren<RowWidget *>(Qt::FindDirectChildrenOnly)) {
        if (!row->index().isValid())
            row->hide();
    }
    updateTabStops();
}

void RowListView::scrollContentsBy(int dx, int dy) {
    QListView::scrollContentsBy(dx, dy);
    showRows();
    if (dragY_)
        showDropLine();
}

void RowListView::updateGeometries() {
    QListView::updateGeometries();
    // The scroll bar may have gone or come just now, of which a view that is not shown yet is
    // not told.
    updateEditorGeometries();
    showRows();
}

void RowListView::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) {
    if (const RowWidget *focused = focusedRow(); focused && focused->index().row() >= start)
        setFocus();
    QListView::rowsAboutToBeRemoved(parent, start, end);
}

void RowListView::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QListView::currentChanged(current, previous);
    if (RowWidget *const row = rowWidget(previous.row()))
        row->setSelected(false);
    if (RowWidget *const row = rowWidget(current.row()))
        row->setSelected(true);
    updateTabStops();
}

bool RowListView::eventFilter(QObject *watched, QEvent *event) {
    // A button would take the arrows for Tab.
    if (event->type() == QEvent::KeyPress) {
        auto *const key = static_cast<QKeyEvent *>(event);
        const RowWidget *const row = focusedRow();
        if (row && !row->takesAllKeys()) {
            if (isUpOrDown(*key)) {
                keyPressEvent(key);
                return key->isAccepted();
            }
            // Nobody would see what the key does.
            if (!viewport()->rect().intersects(visualRect(row->index())))
                scrollTo(row->index());
        }
    }
    return QListView::eventFilter(watched, event);
}

void RowListView::keyPressEvent(QKeyEvent *event) {
    const RowWidget *const focused = focusedRow();
    const Qt::KeyboardModifiers modifiers =
        event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const auto row = modifiers == Qt::NoModifier ? rowForKey(event->key()) : std::nullopt;
    event->ignore();
    if (focused && focused->takesAllKeys())
        return;
    if (modifiers == Qt::AltModifier && isUpOrDown(*event)) {
        moveSelectedRow(event->key() == Qt::Key_Up ? -1 : 1);
        event->accept();
    } else if (row) {
        goToRow(*row);
        event->accept();
    } else if (modifiers == Qt::NoModifier && hasFocus() &&
               (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        event->accept();
        Q_EMIT activated(currentIndex());
    }
}

std::optional<int> RowListView::rowForKey(int key) const {
    const int page = std::max(1, viewport()->height() / pitch() - 1);
    const int last = rowCount() - 1;
    const bool isNone = selectedRow() == kNoRow;
    switch (key) {
        case Qt::Key_Up:
            return isNone ? last : selectedRow() - 1;
        case Qt::Key_Down:
            return selectedRow() + 1;
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return last;
        case Qt::Key_PageUp:
            return isNone ? last : selectedRow() - page;
        case Qt::Key_PageDown:
            return selectedRow() + page;
        default:
            return std::nullopt;
    }
}

/// To the nearest row there is. The focus, if it is in a row, goes along to the same control.
void RowListView::goToRow(int row) {
    const int selected = std::clamp(row, 0, std::max(0, rowCount() - 1));
    const RowWidget *const before = focusedRow();
    const qsizetype at = before ? before->controls().indexOf(window()->focusWidget()) : -1;
    scrollToRow(selected);
    selectRow(selected);
    if (!before)
        return;
    const RowWidget *const now = rowWidget(selected);
    QWidget *const control = now ? now->controls().value(at) : nullptr;
    (control && control->isEnabled() ? control : this)->setFocus(Qt::TabFocusReason);
}

void RowListView::moveSelectedRow(int distance) {
    const int source = selectedRow();
    const int destination = source + distance;
    if (source == kNoRow || destination < 0 || destination >= rowCount())
        return;
    model()->moveRow({}, source, {}, distance > 0 ? destination + 1 : destination);
    goToRow(destination);
}

bool RowListView::focusNextPrevChild(bool next) {
    if (next && hasFocus())
        scrollToRow(selectedRow());
    return QListView::focusNextPrevChild(next);
}

void RowListView::focusInEvent(QFocusEvent *event) {
    const bool isByTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByTab && selectedRow() == kNoRow)
        selectRow(offset() / pitch());
    QListView::focusInEvent(event);
    if (QAccessible::isActive() && selectedRow() != kNoRow) {
        QAccessibleEvent focused(this, QAccessible::Focus);
        focused.setChild(selectedRow());
        QAccessible::updateAccessibility(&focused);
    }
}

void RowListView::focusChanged(QWidget *now) {
    hasFocusInside_ = now && (now == this || isAncestorOf(now));
    updateTabStops();
    const RowWidget *const row = hasFocusInside_ ? focusedRow() : nullptr;
    if (!row || row->index() == currentIndex())
        return;
    setCurrentIndex(row->index());
    // Under a pressed mouse button its target has to stay where it is.
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
        scrollTo(row->index());
}

/// Of the selected row, and while the list has the focus: Backtab comes to the list first.
void RowListView::updateTabStops() {
    for (auto *row : viewport()->findChildren<RowWidget *>(Qt::FindDirectChildrenOnly))
        row->setTabStops(hasFocusInside_ && row->index().isValid() &&
                         row->index() == currentIndex());
}

void RowListView::requestMenu() {
    scrollToRow(selectedRow());
    const QRect row = currentIndex().isValid() ? visualRect(currentIndex()) : viewport()->rect();
    Q_EMIT menuRequested(viewport()->mapToGlobal(row.center()), selectedRow());
}

void RowListView::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        requestMenu();
        return;
    }
    const QModelIndex index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (index.isValid())
        setCurrentIndex(index);
    Q_EMIT menuRequested(event->globalPos(), index.row());
}

void RowListView::mousePressEvent(QMouseEvent *event) {
    pressed_.reset();
    if (event->button() != Qt::LeftButton)
        return;
    // Beside the rows the selection stays: a double-click there opens it.
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    pressed_ = event->position().toPoint();
}

void RowListView::mouseMoveEvent(QMouseEvent *event) {
    if (!pressed_ || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint way = event->position().toPoint() - *pressed_;
    RowWidget *const row = rowWidget(selectedRow());
    if (way.manhattanLength() < QApplication::startDragDistance() || !row || drag_)
        return;
    startRowDrag(row);
    pressed_.reset();
}

/// The system runs an event loop of its own for the drag, in which anything may happen to
/// the list. So the drag belongs to nobody, and waits for the stack to hold none of the
/// list's functions; Qt destroys it at its end.
void RowListView::startRowDrag(RowWidget *row) {
    drag_ = new QDrag(qApp);
    drag_->setMimeData(model()->mimeData({currentIndex()}));
    const bool isTranslucent = rows_->isTranslucencyShown();
    drag_->setPixmap(row->dragPicture(isTranslucent));
    // A picture that hides what is below it stays clear of the line that the pointer is near.
    drag_->setHotSpot(isTranslucent ? *pressed_ - row->pos()
                                    : -QPoint(kBesidePointer, pitch() / 4 + DropLine::kHeight));
    QMetaObject::invokeMethod(
        drag_,
        [drag = drag_.data(), list = QPointer(this)] {
            if (list && list->drag_ == drag && QGuiApplication::mouseButtons() == Qt::LeftButton)
                drag->exec(Qt::MoveAction);
            else
                delete drag;
        },
        Qt::QueuedConnection);
}

void RowListView::cancelDrag() {
    if (!drag_)
        return;
    drag_.clear();
    QDrag::cancel();
}

void RowListView::mouseDoubleClickEvent(QMouseEvent *event) {
    pressed_.reset();
    if (event->button() == Qt::LeftButton)
        Q_EMIT activated(currentIndex());
}

void RowListView::dragEnterEvent(QDragEnterEvent *event) {
    dragMoveEvent(event);
    // Whoever refuses to be entered is not told of the moves that follow.
    event->setAccepted(canTake(*event));
}

void RowListView::dragMoveEvent(QDragMoveEvent *event) {
    if (!canTake(*event)) {
        endDrop();
        event->ignore();
        return;
    }
    dragY_ = event->position().toPoint().y();
    showDropLine();
    if (autoscrollStep(*dragY_, viewport()->height()) == 0)
        autoscrollTimer_.reset();
    else if (!autoscrollTimer_)
        autoscrollTimer_ = timers_.every(kAutoscrollInterval, [this] { autoscroll(); });
    event->setDropAction(dropAction());
    event->setAccepted(gapAtY(*dragY_).has_value());
}

void RowListView::dropEvent(QDropEvent *event) {
    endDrop();
    const auto gap = gapAtY(event->position().toPoint().y());
    const QScopedValueRollback dropping(isDropping_, true);
    event->setDropAction(dropAction());
    event->setAccepted(gap && canTake(*event) &&
                       model()->dropMimeData(event->mimeData(), dropAction(), *gap, 0, {}));
}

/// Other programs would delete the text that they let go of as moved.
Qt::DropAction RowListView::dropAction() const {
    return drag_ ? Qt::MoveAction : Qt::CopyAction;
}

bool RowListView::canTake(const QDropEvent &event) const {
    return event.possibleActions().testFlag(dropAction()) &&
           model()->canDropMimeData(event.mimeData(), dropAction(), 0, 0, {});
}

std::optional<int> RowListView::gapAtY(int y) const {
    return gapAt(y + offset(), pitch(), rowCount());
}

void RowListView::showDropLine() {
    const QRect row = rows_->rowRect(viewport()->rect());
    if (const auto gap = gapAtY(*dragY_))
        dropLine_->showAt(*gap * pitch() - offset(), row.left(), row.width());
    else
        dropLine_->hide();
}

void RowListView::autoscroll() {
    QScrollBar *const bar = verticalScrollBar();
    bar->setValue(bar->value() + autoscrollStep(*dragY_, viewport()->height()));
}

void RowListView::endDrop() {
    dragY_.reset();
    autoscrollTimer_.reset();
    dropLine_->hide();
}

}  // namespace kestrelbay
