#include "ui/list/RowTableAccessible.h"

#include "ui/list/RowSlot.h"
#include "ui/list/RowTableSource.h"
#include "ui/list/RowTableView.h"

namespace kestrelbay {

namespace {

QAccessibleInterface *makeAccessible(const QString &, QObject *object) {
    if (auto *const table = qobject_cast<RowTableView *>(object))
        return new RowTableAccessible(table);
    if (auto *const slot = qobject_cast<RowSlot *>(object))
        return new RowSlotAccessible(slot);
    return nullptr;
}

RowTableView *tableOf(const RowSlot &slot) {
    return qobject_cast<RowTableView *>(slot.parentWidget()->parentWidget());
}

QStringList rowActions() {
    return {QAccessibleActionInterface::pressAction(),
            QAccessibleActionInterface::setFocusAction()};
}

void doRowAction(RowTableView &table, int row, const QString &action) {
    if (!rowActions().contains(action))
        return;
    table.scrollToRow(row);
    table.selectRow(row);
    table.setFocus();
    if (action == QAccessibleActionInterface::pressAction())
        Q_EMIT table.activated();
}

void setRowState(QAccessible::State &state, const RowTableView &table, int row) {
    state.focusable = true;
    state.selectable = true;
    state.selected = table.selectedRow() == row;
    state.focused = state.selected && table.hasFocus();
}

}  // namespace

void installRowTableAccessibility() {
    // Qt takes every factory once only.
    QAccessible::installFactory(makeAccessible);
}

RowTableAccessible::RowTableAccessible(RowTableView *table)
    : QAccessibleWidget(table, QAccessible::List), table_(table) {}

RowTableAccessible::~RowTableAccessible() {
    for (const auto &[row, id] : distantRows_)
        QAccessible::deleteAccessibleInterface(id);
}

int RowTableAccessible::childCount() const {
    return table_->rows().count;
}

QAccessibleInterface *RowTableAccessible::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    if (RowSlot *const slot = table_->slot(index))
        return QAccessible::queryAccessibleInterface(slot);
    if (const auto known = distantRows_.find(index); known != distantRows_.end())
        return QAccessible::accessibleInterface(known->second);
    auto *const row = new DistantRowAccessible(table_, index);
    distantRows_.emplace(index, QAccessible::registerAccessibleInterface(row));
    return row;
}

int RowTableAccessible::indexOfChild(const QAccessibleInterface *child) const {
    if (const auto *const slot = qobject_cast<RowSlot *>(child->object()))
        return slot->row();
    const auto *const distant = dynamic_cast<const DistantRowAccessible *>(child);
    return distant ? distant->row() : -1;
}

QAccessibleInterface *RowTableAccessible::childAt(int x, int y) const {
    const QPoint point = table_->viewport()->mapFromGlobal(QPoint(x, y));
    if (!table_->viewport()->rect().contains(point))
        return nullptr;
    const auto row = table_->rows().rowAt(point.y() + table_->offset());
    return row ? child(*row) : nullptr;
}

QAccessibleInterface *RowTableAccessible::focusChild() const {
    if (table_->hasFocus())
        return child(table_->selectedRow());
    QWidget *const focus = table_->focusWidget();
    return focus && table_->isAncestorOf(focus) ? QAccessible::queryAccessibleInterface(focus)
                                                : nullptr;
}

RowSlotAccessible::RowSlotAccessible(RowSlot *slot)
    : QAccessibleWidget(slot, QAccessible::ListItem), slot_(slot) {}

QAccessibleInterface *RowSlotAccessible::parent() const {
    return QAccessible::queryAccessibleInterface(tableOf(*slot_));
}

QString RowSlotAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? tableOf(*slot_)->source().rowName(slot_->row())
                                     : QAccessibleWidget::text(kind);
}

QAccessible::State RowSlotAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    setRowState(state, *tableOf(*slot_), slot_->row());
    return state;
}

QStringList RowSlotAccessible::actionNames() const {
    return rowActions();
}

void RowSlotAccessible::doAction(const QString &actionName) {
    doRowAction(*tableOf(*slot_), slot_->row(), actionName);
}

DistantRowAccessible::DistantRowAccessible(RowTableView *table, int row)
    : table_(table), row_(row) {}

bool DistantRowAccessible::isValid() const {
    return row_ < table_->rows().count;
}

QAccessibleInterface *DistantRowAccessible::parent() const {
    return QAccessible::queryAccessibleInterface(table_);
}

QString DistantRowAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name && isValid() ? table_->source().rowName(row_) : QString();
}

QRect DistantRowAccessible::rect() const {
    const auto [left, width] = table_->rowSpan();
    const QPoint corner(left, table_->rows().top(row_) - table_->offset());
    return {table_->viewport()->mapToGlobal(corner), QSize(width, table_->rows().rowHeight)};
}

QAccessible::State DistantRowAccessible::state() const {
    QAccessible::State state;
    state.offscreen = true;
    setRowState(state, *table_, row_);
    return state;
}

void *DistantRowAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                : nullptr;
}

QStringList DistantRowAccessible::actionNames() const {
    return rowActions();
}

void DistantRowAccessible::doAction(const QString &actionName) {
    doRowAction(*table_, row_, actionName);
}

}  // namespace kestrelbay
