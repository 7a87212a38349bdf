#include <QApplication>

#include <set>
#include <vector>

#include "ui/list/RowSlot.h"
#include "ui/list/RowTableFixture.h"

namespace kestrelbay {
namespace {

class RowTableFocusTest : public RowTableFixture {};

TEST_F(RowTableFocusTest, goesByTabThroughTheControlsOfTheSelectedRowAndOn) {
    show(10);
    table_->selectRow(3);
    before_->setFocus();
    const std::vector<QWidget *> stops{table_, row(3)->first_, row(3)->second_, after_};
    for (QWidget *stop : stops) {
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), stop);
    }
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), table_);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), before_);
}

TEST_F(RowTableFocusTest, goesBackByTabThroughTheControls) {
    show(10);
    row(3)->second_->setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->first_);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), table_);
}

TEST_F(RowTableFocusTest, leavesOutControlsThatCannotBeUsed) {
    show(10);
    table_->selectRow(3);
    row(3)->first_->setEnabled(false);
    table_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowTableFocusTest, selectsARowWhenTabComesIn) {
    show(100);
    scrollTo(10 * kPitch);
    before_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(table_->selectedRow(), 10);
    EXPECT_TRUE(table_->slot(10)->hasFocusRing());
    press(Qt::Key_Tab);
    EXPECT_FALSE(table_->slot(10)->hasFocusRing());
}

TEST_F(RowTableFocusTest, bringsTheSelectedRowIntoViewForTab) {
    show(100);
    table_->selectRow(0);
    table_->setFocus();
    scrollTo(50 * kPitch);
    press(Qt::Key_Tab);
    EXPECT_TRUE(isInView(0));
    EXPECT_EQ(QApplication::focusWidget(), row(0)->first_);
}

TEST_F(RowTableFocusTest, selectsTheRowThatGetsTheFocusAndShowsAllOfIt) {
    show(100);
    scrollTo(30);
    row(0)->first_->setFocus();
    EXPECT_EQ(table_->selectedRow(), 0);
    EXPECT_TRUE(isInView(0));
}

TEST_F(RowTableFocusTest, keepsTheFocusedRowWhileItIsOutOfSight) {
    show(100);
    QWidget *const control = row(2)->first_;
    control->setFocus();
    source_.configured_ = 0;
    scrollTo(50 * kPitch);
    EXPECT_EQ(QApplication::focusWidget(), control);
    EXPECT_EQ(row(2)->number_, 2);
    EXPECT_EQ(source_.configured_, 5);
    // Once the focus is elsewhere nothing keeps it.
    before_->setFocus();
    scrollTo(60 * kPitch);
    EXPECT_EQ(row(2), nullptr);
}

TEST_F(RowTableFocusTest, tellsWhichRowsLeaveTheView) {
    show(100);
    row(2)->first_->setFocus();
    scrollTo(2 * kPitch);
    EXPECT_EQ(source_.left_, (std::set{0, 1}));
    scrollTo(4 * kPitch);
    EXPECT_EQ(source_.left_, (std::set{0, 1, 2, 3}));
}

TEST_F(RowTableFocusTest, bringsTheFocusedRowIntoViewForAKey) {
    show(100);
    row(2)->first_->setFocus();
    scrollTo(50 * kPitch);
    press(Qt::Key_Space);
    EXPECT_TRUE(isInView(2));
    scrollTo(50 * kPitch);
    row(2)->takesAllKeys_ = true;
    press(Qt::Key_Space);
    EXPECT_FALSE(isInView(2));
}

TEST_F(RowTableFocusTest, keepsTheFocusWhenTheRowsBeforeItRemain) {
    show(100);
    row(2)->first_->setFocus();
    source_.setCount(3);
    table_->reload();
    EXPECT_EQ(QApplication::focusWidget(), row(2)->first_);
}

TEST_F(RowTableFocusTest, takesTheFocusOfARowThatIsGone) {
    show(100);
    row(2)->first_->setFocus();
    source_.setCount(2);
    table_->reload();
    EXPECT_EQ(QApplication::focusWidget(), table_);
    EXPECT_EQ(table_->selectedRow(), 1);
}

}  // namespace
}  // namespace kestrelbay
