#include "ui/list/RowListView.h"

#include <QScrollBar>
#include <QTest>

#include "ui/list/RowListFixture.h"

namespace kestrelbay {
namespace {

class RowListTest : public RowListFixture {};

TEST_F(RowListTest, makesWidgetsForAScreenfulOnly) {
    show(1000);
    EXPECT_EQ(made_, 5);
    for (int offset = 0; offset <= list_->verticalScrollBar()->maximum(); offset += 97)
        scrollTo(offset);
    EXPECT_EQ(made_, 6);
    EXPECT_EQ(row(0), nullptr);
}

TEST_F(RowListTest, showsTheRowsOfItsOffset) {
    show(1000);
    scrollTo(100 * kPitch + 10);
    for (int index = 100; index <= 105; ++index) {
        ASSERT_NE(row(index), nullptr) << index;
        EXPECT_EQ(row(index)->number_, index);
        EXPECT_EQ(row(index)->geometry(),
                  QRect(10, (index - 100) * kPitch + 2 - 10, list_->viewport()->width() - 20, 52));
        EXPECT_TRUE(row(index)->isVisible());
    }
    EXPECT_EQ(row(106), nullptr);
}

TEST_F(RowListTest, configuresOnlyRowsThatComeIntoView) {
    show(1000);
    configured_ = 0;
    scrollTo(kPitch);
    EXPECT_EQ(configured_, 1);
    scrollTo(kPitch + 20);
    EXPECT_EQ(configured_, 2);
    scrollTo(kPitch + 40);
    EXPECT_EQ(configured_, 2);
}

TEST_F(RowListTest, takesTheRoomOfAScrollBarThatGoesBeforeTheListIsShown) {
    list_->setFixedHeight(30);
    window_.resize(100, 100);
    reload(1);
    ASSERT_GT(list_->verticalScrollBar()->maximum(), 0);
    list_->setFixedHeight(5 * kPitch);
    window_.resize(400, 400);
    window_.show();
    ASSERT_TRUE(activate(window_));
    EXPECT_EQ(row(0)->geometry(), QRect(10, 2, 400 - 20, 52));
}

TEST_F(RowListTest, hasAScrollBarOnlyWhenItNeedsOne) {
    show(5);
    QCoreApplication::processEvents();
    EXPECT_FALSE(list_->verticalScrollBar()->isVisible());
    reload(6);
    QCoreApplication::processEvents();
    EXPECT_TRUE(list_->verticalScrollBar()->isVisible());
}

TEST_F(RowListTest, keepsItsOffsetWhenReloaded) {
    show(100);
    scrollTo(1234);
    model_.reload();
    EXPECT_EQ(list_->offset(), 1234);
    reload(10);
    EXPECT_EQ(list_->offset(), 5 * kPitch);
    reload(0);
    EXPECT_EQ(list_->offset(), 0);
    EXPECT_EQ(row(0), nullptr);
}

TEST_F(RowListTest, scrollsAsLittleAsShowsTheRow) {
    show(100);
    list_->scrollToRow(4);
    EXPECT_EQ(list_->offset(), 0);
    list_->scrollToRow(5);
    EXPECT_EQ(list_->offset(), kPitch);
    scrollTo(70);
    list_->scrollToRow(0);
    EXPECT_EQ(list_->offset(), 0);
    scrollTo(10);
    list_->setFixedHeight(kPitch / 2);
    QCoreApplication::processEvents();
    list_->scrollToRow(3);
    EXPECT_EQ(list_->offset(), 3 * kPitch);
}

TEST_F(RowListTest, hidesTheWidgetsThatHaveNoRow) {
    show(100);
    reload(2);
    int shown = 0;
    for (const auto *widget : list_->viewport()->findChildren<RowWidget *>())
        shown += widget->isVisible() ? 1 : 0;
    EXPECT_EQ(shown, 2);
}

TEST_F(RowListTest, keepsTheSelectedIndexAsFarAsItExists) {
    show(10);
    list_->selectRow(9);
    model_.reload();
    EXPECT_EQ(list_->selectedRow(), 9);
    reload(3);
    EXPECT_EQ(list_->selectedRow(), 2);
    reload(0);
    EXPECT_EQ(list_->selectedRow(), RowListView::kNoRow);
}

TEST_F(RowListTest, tellsOneRowThatItIsSelected) {
    show(10);
    list_->selectRow(1);
    EXPECT_TRUE(row(1)->isSelected_);
    list_->selectRow(3);
    EXPECT_FALSE(row(1)->isSelected_);
    EXPECT_TRUE(row(3)->isSelected_);
    list_->selectRow(10);
    EXPECT_EQ(list_->selectedRow(), RowListView::kNoRow);
    EXPECT_FALSE(row(3)->isSelected_);
}

TEST_F(RowListTest, showsARecycledRowSelectedOnlyIfItIs) {
    show(100);
    list_->selectRow(0);
    scrollTo(50 * kPitch);
    for (int index = 50; index < 55; ++index)
        EXPECT_FALSE(row(index)->isSelected_) << index;
    scrollTo(0);
    EXPECT_TRUE(row(0)->isSelected_);
}

TEST_F(RowListTest, selectsTheRowUnderThePointer) {
    show(10);
    scrollTo(30);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, QPoint(200, 3 * kPitch));
    EXPECT_EQ(list_->selectedRow(), 3);
    QTest::mouseClick(list_->viewport(), Qt::RightButton, {}, QPoint(200, kPitch));
    EXPECT_EQ(list_->selectedRow(), 3);
}

TEST_F(RowListTest, keepsTheSelectionAtAPressBesideTheRows) {
    show(2);
    list_->selectRow(1);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, QPoint(200, 4 * kPitch));
    EXPECT_EQ(list_->selectedRow(), 1);
}

}  // namespace
}  // namespace kestrelbay
