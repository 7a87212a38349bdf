#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <utility>
#include <vector>

#include "fixtures/DoubleClick.h"
#include "ui/list/RowTableFixture.h"

namespace kestrelbay {
namespace {

class RowTableKeysTest : public RowTableFixture {};

TEST_F(RowTableKeysTest, selectsByKeyAndScrollsThere) {
    show(100);
    table_->setFocus();
    const std::vector<std::pair<int, int>> table{
        {Qt::Key_Down, 0},      {Qt::Key_Down, 1},   {Qt::Key_PageDown, 5}, {Qt::Key_PageDown, 9},
        {Qt::Key_Up, 8},        {Qt::Key_PageUp, 4}, {Qt::Key_End, 99},     {Qt::Key_Down, 99},
        {Qt::Key_PageDown, 99}, {Qt::Key_Home, 0},   {Qt::Key_Up, 0},       {Qt::Key_PageUp, 0},
    };
    for (const auto &[key, selected] : table) {
        press(key);
        EXPECT_EQ(table_->selectedRow(), selected) << key;
        EXPECT_TRUE(isInView(selected)) << key;
    }
}

TEST_F(RowTableKeysTest, startsAtTheEndWhenUpIsPressedWithoutASelection) {
    show(100);
    table_->setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(table_->selectedRow(), 99);
}

TEST_F(RowTableKeysTest, bearsKeysWithoutRows) {
    show(0);
    table_->setFocus();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown})
        press(key);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(table_->selectedRow(), RowTableView::kNoRow);
}

TEST_F(RowTableKeysTest, movesTheSelectedRowByKey) {
    show(100);
    table_->setFocus();
    table_->selectRow(4);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_[5], 4);
    EXPECT_EQ(table_->selectedRow(), 5);
    EXPECT_TRUE(isInView(5));
    press(Qt::Key_Up, Qt::AltModifier);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_[3], 4);
    EXPECT_EQ(table_->selectedRow(), 3);
}

TEST_F(RowTableKeysTest, movesNoRowBeyondTheEnds) {
    show(2);
    table_->setFocus();
    table_->selectRow(0);
    press(Qt::Key_Up, Qt::AltModifier);
    table_->selectRow(1);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_, (std::vector{0, 1}));
}

TEST_F(RowTableKeysTest, takesTheFocusAlongWithAMovedRow) {
    show(10);
    row(2)->second_->setFocus();
    EXPECT_EQ(table_->selectedRow(), 2);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_[3], 2);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowTableKeysTest, goesToTheSameControlOfTheNextRow) {
    show(10);
    row(2)->second_->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(table_->selectedRow(), 3);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
    press(Qt::Key_End);
    EXPECT_TRUE(isInView(9));
    EXPECT_EQ(QApplication::focusWidget(), row(9)->second_);
}

TEST_F(RowTableKeysTest, leavesAllKeysToARowThatWantsThem) {
    show(10);
    row(2)->first_->setFocus();
    row(2)->takesAllKeys_ = true;
    press(Qt::Key_PageDown);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(table_->selectedRow(), 2);
    EXPECT_EQ(source_.numbers_[2], 2);
}

TEST_F(RowTableKeysTest, opensByReturnOrDoubleClick) {
    show(10);
    const QSignalSpy opened(table_, &RowTableView::activated);
    table_->setFocus();
    press(Qt::Key_Return);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(opened.count(), 2);
    doubleClick(table_->viewport(), QPoint(200, kPitch / 2));
    EXPECT_EQ(opened.count(), 3);
    row(1)->first_->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(opened.count(), 3);
}

}  // namespace
}  // namespace kestrelbay
