#pragma once

#include <QString>

class QWidget;

namespace kestrelbay {

/// What a RowTableView shows and lets happen. Rows count from 0 in the order of the
/// list. Main thread.
class RowTableSource {
public:
    virtual ~RowTableSource() = default;

    [[nodiscard]] virtual int rowCount() const = 0;
    /// A widget for any row; the parent owns it. It is made for one row and then shows
    /// many, one after the other.
    [[nodiscard]] virtual QWidget *makeRow(QWidget *parent) = 0;
    /// Has the widget show this row and nothing of the one before. The list may
    /// have become shorter since rowCount() was asked.
    virtual void configureRow(QWidget *widget, int row) = 0;
    virtual void setRowSelected(QWidget *widget, bool selected) = 0;
    /// Does the widget want every key just now, the arrows included?
    [[nodiscard]] virtual bool rowTakesAllKeys(QWidget *widget) const = 0;
    /// Nobody sees the row any more, though its widget may be kept for its focus. What
    /// goes on in it has to end. May be called again for the same row.
    virtual void rowLeftView(QWidget *widget) = 0;
    /// What a screen reader says of the row.
    [[nodiscard]] virtual QString rowName(int row) const = 0;

    /// A text was dropped into the gap above the row; below the last one when it is
    /// rowCount(). False when it is none of this list's.
    [[nodiscard]] virtual bool acceptDrop(const QString &text, int gap) = 0;
    /// The user wants the row at another index, which exists.
    virtual void moveRow(int source, int destination) = 0;
};

}  // namespace kestrelbay
