#pragma once

#include <QList>
#include <QWidget>

namespace kestrelbay {

/// The place of one row that is on screen. Screen readers take it for the row. The
/// focus goes to its controls by the table's rules, not in the order of the window.
class RowSlot final : public QWidget {
    Q_OBJECT

public:
    explicit RowSlot(QWidget *viewport);

    /// The widget that fills the slot, which becomes its owner.
    void setContent(QWidget *content);
    [[nodiscard]] QWidget *content() const { return content_; }

    void setRow(int row) { row_ = row; }
    [[nodiscard]] int row() const { return row_; }

    /// A ring tells that keys go to this row.
    void setFocusRing(bool shown);
    [[nodiscard]] bool hasFocusRing() const { return hasFocusRing_; }

    /// The content's controls that take the keyboard, in the order of Tab.
    [[nodiscard]] const QList<QWidget *> &controls() const { return controls_; }
    /// The n-th of them; null when there is none, or it cannot be used now.
    [[nodiscard]] QWidget *usableControl(qsizetype index) const;
    /// Which of them has the focus of the window, or something in it; -1 for none. The
    /// window keeps it while a sheet has the keyboard.
    [[nodiscard]] qsizetype focusedControl() const;
    [[nodiscard]] bool hasFocusInside() const;

    /// What is seen of the row while it is dragged: without the ring, and translucent, so
    /// that it does not hide where it would be dropped.
    [[nodiscard]] QPixmap dragPicture() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *content_ = nullptr;
    QList<QWidget *> controls_;
    int row_ = -1;
    bool hasFocusRing_ = false;
};

}  // namespace kestrelbay
