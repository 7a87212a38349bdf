#include "ui/list/RowTableView.h"

#include <QScrollBar>
#include <QTest>

#include "ui/list/RowSlot.h"
#include "ui/list/RowTableFixture.h"

namespace kestrelbay {
namespace {

class RowTableTest : public RowTableFixture {};

TEST_F(RowTableTest, makesWidgetsForAScreenfulOnly) {
    show(1000);
    EXPECT_EQ(source_.made_, 5);
    for (int offset = 0; offset <= table_->verticalScrollBar()->maximum(); offset += 97)
        scrollTo(offset);
    EXPECT_EQ(source_.made_, 6);
    EXPECT_EQ(row(0), nullptr);
}

TEST_F(RowTableTest, showsTheRowsOfItsOffset) {
    show(1000);
    scrollTo(100 * kPitch + 10);
    for (int index = 100; index <= 105; ++index) {
        ASSERT_NE(row(index), nullptr) << index;
        EXPECT_EQ(row(index)->number_, index);
        EXPECT_EQ(table_->slot(index)->geometry(),
                  QRect(10, (index - 100) * kPitch + 2 - 10, table_->viewport()->width() - 20, 52));
        EXPECT_TRUE(row(index)->isVisible());
    }
    EXPECT_EQ(row(106), nullptr);
}

TEST_F(RowTableTest, configuresOnlyRowsThatComeIntoView) {
    show(1000);
    source_.configured_ = 0;
    scrollTo(kPitch);
    EXPECT_EQ(source_.configured_, 1);
    scrollTo(kPitch + 20);
    EXPECT_EQ(source_.configured_, 2);
    scrollTo(kPitch + 40);
    EXPECT_EQ(source_.configured_, 2);
}

TEST_F(RowTableTest, hasAScrollBarOnlyWhenItNeedsOne) {
    show(5);
    QCoreApplication::processEvents();
    EXPECT_FALSE(table_->verticalScrollBar()->isVisible());
    source_.setCount(6);
    table_->reload();
    QCoreApplication::processEvents();
    EXPECT_TRUE(table_->verticalScrollBar()->isVisible());
}

TEST_F(RowTableTest, keepsItsOffsetWhenReloaded) {
    show(100);
    scrollTo(1234);
    table_->reload();
    EXPECT_EQ(table_->offset(), 1234);
    source_.setCount(10);
    table_->reload();
    EXPECT_EQ(table_->offset(), 5 * kPitch);
    source_.setCount(0);
    table_->reload();
    EXPECT_EQ(table_->offset(), 0);
    EXPECT_EQ(row(0), nullptr);
}

TEST_F(RowTableTest, keepsTheSelectedIndexAsFarAsItExists) {
    show(10);
    table_->selectRow(9);
    table_->reload();
    EXPECT_EQ(table_->selectedRow(), 9);
    source_.setCount(3);
    table_->reload();
    EXPECT_EQ(table_->selectedRow(), 2);
    source_.setCount(0);
    table_->reload();
    EXPECT_EQ(table_->selectedRow(), RowTableView::kNoRow);
}

TEST_F(RowTableTest, tellsOneRowThatItIsSelected) {
    show(10);
    table_->selectRow(1);
    EXPECT_TRUE(row(1)->isSelected_);
    table_->selectRow(3);
    EXPECT_FALSE(row(1)->isSelected_);
    EXPECT_TRUE(row(3)->isSelected_);
    table_->selectRow(10);
    EXPECT_EQ(table_->selectedRow(), RowTableView::kNoRow);
    EXPECT_FALSE(row(3)->isSelected_);
}

TEST_F(RowTableTest, showsARecycledRowSelectedOnlyIfItIs) {
    show(100);
    table_->selectRow(0);
    scrollTo(50 * kPitch);
    for (int index = 50; index < 55; ++index)
        EXPECT_FALSE(row(index)->isSelected_) << index;
    scrollTo(0);
    EXPECT_TRUE(row(0)->isSelected_);
}

TEST_F(RowTableTest, selectsTheRowUnderThePointer) {
    show(10);
    scrollTo(30);
    QTest::mouseClick(table_->viewport(), Qt::LeftButton, {}, QPoint(200, 3 * kPitch));
    EXPECT_EQ(table_->selectedRow(), 3);
    QTest::mouseClick(table_->viewport(), Qt::RightButton, {}, QPoint(200, kPitch));
    EXPECT_EQ(table_->selectedRow(), 3);
}

TEST_F(RowTableTest, keepsTheSelectionAtAPressBesideTheRows) {
    show(2);
    table_->selectRow(1);
    QTest::mouseClick(table_->viewport(), Qt::LeftButton, {}, QPoint(200, 4 * kPitch));
    EXPECT_EQ(table_->selectedRow(), 1);
}

}  // namespace
}  // namespace kestrelbay
