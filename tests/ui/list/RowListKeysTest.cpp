#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <utility>
#include <vector>

#include "fixtures/DoubleClick.h"
#include "ui/list/RowListFixture.h"

namespace kestrelbay {
namespace {

class RowListKeysTest : public RowListFixture {};

TEST_F(RowListKeysTest, selectsByKeyAndScrollsThere) {
    show(100);
    list_->setFocus();
    const std::vector<std::pair<int, int>> table{
        {Qt::Key_Down, 0},      {Qt::Key_Down, 1},   {Qt::Key_PageDown, 5}, {Qt::Key_PageDown, 9},
        {Qt::Key_Up, 8},        {Qt::Key_PageUp, 4}, {Qt::Key_End, 99},     {Qt::Key_Down, 99},
        {Qt::Key_PageDown, 99}, {Qt::Key_Home, 0},   {Qt::Key_Up, 0},       {Qt::Key_PageUp, 0},
    };
    for (const auto &[key, selected] : table) {
        press(key);
        EXPECT_EQ(list_->selectedRow(), selected) << key;
        EXPECT_TRUE(isInView(selected)) << key;
    }
}

TEST_F(RowListKeysTest, movesByAtLeastOneRowAPage) {
    show(100);
    list_->setFixedHeight(10);
    QCoreApplication::processEvents();
    list_->setFocus();
    list_->selectRow(3);
    press(Qt::Key_PageDown);
    EXPECT_EQ(list_->selectedRow(), 4);
}

TEST_F(RowListKeysTest, startsAtTheEndWhenUpIsPressedWithoutASelection) {
    show(100);
    list_->setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(list_->selectedRow(), 99);
}

TEST_F(RowListKeysTest, bearsKeysWithoutRows) {
    show(0);
    list_->setFocus();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown})
        press(key);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(list_->selectedRow(), RowListView::kNoRow);
}

TEST_F(RowListKeysTest, movesTheSelectedRowByKey) {
    show(100);
    list_->setFocus();
    list_->selectRow(4);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(model_.numbers_[5], 4);
    EXPECT_EQ(list_->selectedRow(), 5);
    EXPECT_TRUE(isInView(5));
    press(Qt::Key_Up, Qt::AltModifier);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(model_.numbers_[3], 4);
    EXPECT_EQ(list_->selectedRow(), 3);
}

TEST_F(RowListKeysTest, movesNoRowBeyondTheEnds) {
    show(2);
    list_->setFocus();
    list_->selectRow(0);
    press(Qt::Key_Up, Qt::AltModifier);
    list_->selectRow(1);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(model_.numbers_, (std::vector{0, 1}));
}

TEST_F(RowListKeysTest, takesTheFocusAlongWithAMovedRow) {
    show(10);
    row(2)->second_->setFocus();
    EXPECT_EQ(list_->selectedRow(), 2);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(model_.numbers_[3], 2);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowListKeysTest, goesToTheSameControlOfTheNextRow) {
    show(10);
    row(2)->second_->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(list_->selectedRow(), 3);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
    press(Qt::Key_End);
    EXPECT_TRUE(isInView(9));
    EXPECT_EQ(QApplication::focusWidget(), row(9)->second_);
}

TEST_F(RowListKeysTest, leavesAllKeysToARowThatWantsThem) {
    show(10);
    row(2)->first_->setFocus();
    row(2)->takesAllKeys_ = true;
    press(Qt::Key_PageDown);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(list_->selectedRow(), 2);
    EXPECT_EQ(model_.numbers_[2], 2);
}

TEST_F(RowListKeysTest, opensByReturnOrDoubleClick) {
    show(10);
    const QSignalSpy opened(list_, &RowListView::activated);
    list_->setFocus();
    press(Qt::Key_Return);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(opened.count(), 2);
    doubleClick(list_->viewport(), QPoint(200, kPitch / 2));
    EXPECT_EQ(opened.count(), 3);
    row(1)->first_->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(opened.count(), 3);
}

}  // namespace
}  // namespace kestrelbay
