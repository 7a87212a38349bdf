#include <QApplication>

#include <set>
#include <vector>

#include "ui/list/RowListFixture.h"

namespace kestrelbay {
namespace {

class RowListFocusTest : public RowListFixture {};

TEST_F(RowListFocusTest, goesByTabThroughTheControlsOfTheSelectedRowAndOn) {
    show(10);
    list_->selectRow(3);
    before_->setFocus();
    const std::vector<QWidget *> stops{list_, row(3)->first_, row(3)->second_, after_};
    for (QWidget *stop : stops) {
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), stop);
    }
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), list_);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), before_);
}

TEST_F(RowListFocusTest, goesBackByTabThroughTheControls) {
    show(10);
    row(3)->second_->setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->first_);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), list_);
}

TEST_F(RowListFocusTest, leavesOutControlsThatCannotBeUsed) {
    show(10);
    list_->selectRow(3);
    row(3)->first_->setEnabled(false);
    list_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowListFocusTest, selectsARowWhenTabComesIn) {
    show(100);
    scrollTo(10 * kPitch);
    before_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(list_->selectedRow(), 10);
    EXPECT_TRUE(hasFocusRing(10));
    press(Qt::Key_Tab);
    EXPECT_FALSE(hasFocusRing(10));
}

TEST_F(RowListFocusTest, showsItsRingToThoseWhoUseTheKeyboard) {
    show(10);
    const auto click = [this](int index) {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, row(index)->geometry().center());
        ASSERT_TRUE(list_->hasFocus());
        ASSERT_EQ(list_->selectedRow(), index);
    };
    click(3);
    EXPECT_FALSE(hasFocusRing(3));
    press(Qt::Key_Super_L);
    EXPECT_FALSE(hasFocusRing(3));
    press(Qt::Key_Down);
    EXPECT_TRUE(hasFocusRing(4));
    click(4);
    EXPECT_FALSE(hasFocusRing(4));
    before_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocusRing(4));
    click(1);
    EXPECT_FALSE(hasFocusRing(1));
}

TEST_F(RowListFocusTest, bringsTheSelectedRowIntoViewForTab) {
    show(100);
    list_->selectRow(0);
    list_->setFocus();
    scrollTo(50 * kPitch);
    press(Qt::Key_Tab);
    EXPECT_TRUE(isInView(0));
    EXPECT_EQ(QApplication::focusWidget(), row(0)->first_);
}

TEST_F(RowListFocusTest, selectsTheRowThatGetsTheFocusAndShowsAllOfIt) {
    show(100);
    scrollTo(30);
    row(0)->first_->setFocus();
    EXPECT_EQ(list_->selectedRow(), 0);
    EXPECT_TRUE(isInView(0));
}

TEST_F(RowListFocusTest, keepsTheFocusedRowWhileItIsOutOfSight) {
    show(100);
    QWidget *const control = row(2)->first_;
    control->setFocus();
    configured_ = 0;
    scrollTo(50 * kPitch);
    EXPECT_EQ(QApplication::focusWidget(), control);
    EXPECT_EQ(row(2)->number_, 2);
    EXPECT_EQ(configured_, 5);
    // Once the focus is elsewhere nothing keeps it.
    before_->setFocus();
    scrollTo(60 * kPitch);
    EXPECT_EQ(row(2), nullptr);
}

TEST_F(RowListFocusTest, tellsWhichRowsLeaveTheView) {
    show(100);
    row(2)->first_->setFocus();
    scrollTo(2 * kPitch);
    EXPECT_EQ(left_, (std::set{0, 1}));
    scrollTo(4 * kPitch);
    EXPECT_EQ(left_, (std::set{0, 1, 2, 3}));
}

TEST_F(RowListFocusTest, bringsTheFocusedRowIntoViewForAKey) {
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

TEST_F(RowListFocusTest, keepsTheFocusWhenTheRowsBeforeItRemain) {
    show(100);
    row(2)->first_->setFocus();
    reload(3);
    EXPECT_EQ(QApplication::focusWidget(), row(2)->first_);
}

TEST_F(RowListFocusTest, takesTheFocusOfARowThatIsGone) {
    show(100);
    row(2)->first_->setFocus();
    reload(2);
    EXPECT_EQ(QApplication::focusWidget(), list_);
    EXPECT_EQ(list_->selectedRow(), 1);
}

}  // namespace
}  // namespace kestrelbay
