#include "ui/list/RowSlots.h"

#include <utility>

#include "ui/list/RowSlot.h"
#include "ui/list/RowTableSource.h"

namespace kestrelbay {

RowSlots::RowSlots(RowTableSource &source, QWidget *viewport, std::function<void(RowSlot *)> made)
    : source_(source), viewport_(viewport), made_(std::move(made)) {}

void RowSlots::show(RowGeometry::Range rows) {
    release(rows);
    for (int row = rows.first; row < rows.end; ++row) {
        if (shown_.contains(row))
            continue;
        RowSlot *const slot = take();
        shown_.emplace(row, slot);
        fill(slot, row);
        slot->show();
    }
    for (RowSlot *slot : free_)
        slot->hide();
}

void RowSlots::configureAll() {
    for (const auto &[row, slot] : shown_)
        fill(slot, row);
}

void RowSlots::place(const RowGeometry &rows, int offset, int left, int width) {
    for (const auto &[row, slot] : shown_)
        slot->setGeometry(left, rows.top(row) - offset, width, rows.rowHeight);
}

void RowSlots::setSelectedRow(int row) {
    const int before = std::exchange(selectedRow_, row);
    if (before == row)
        return;
    if (RowSlot *const old = slot(before))
        showSelection(old);
    if (RowSlot *const now = slot(row))
        showSelection(now);
}

void RowSlots::setFocused(bool focused) {
    isFocused_ = focused;
    if (RowSlot *const selected = slot(selectedRow_))
        selected->setFocusRing(focused);
}

RowSlot *RowSlots::slot(int row) const {
    const auto found = shown_.find(row);
    return found == shown_.end() ? nullptr : found->second;
}

RowSlot *RowSlots::focusedSlot() const {
    for (const auto &[row, slot] : shown_) {
        if (slot->hasFocusInside())
            return slot;
    }
    return nullptr;
}

void RowSlots::release(RowGeometry::Range rows) {
    for (const auto &[row, slot] : shown_) {
        if (!rows.contains(row))
            source_.rowLeftView(slot->content());
    }
    std::erase_if(shown_, [&](const auto &entry) {
        if (rows.contains(entry.first) || entry.second->hasFocusInside())
            return false;
        free_.push_back(entry.second);
        return true;
    });
}

RowSlot *RowSlots::take() {
    if (!free_.empty()) {
        RowSlot *const slot = free_.back();
        free_.pop_back();
        return slot;
    }
    auto *const slot = new RowSlot(viewport_);
    slot->setContent(source_.makeRow(slot));
    made_(slot);
    return slot;
}

void RowSlots::fill(RowSlot *slot, int row) {
    slot->setRow(row);
    source_.configureRow(slot->content(), row);
    showSelection(slot);
}

void RowSlots::showSelection(RowSlot *slot) {
    const bool isSelected = slot->row() == selectedRow_;
    source_.setRowSelected(slot->content(), isSelected);
    slot->setFocusRing(isSelected && isFocused_);
}

}  // namespace kestrelbay
