#include "preferences/RowTableView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <set>
#include <vector>

#include "core/QtPrinters.h"
#include "fakes/FakeTimers.h"
#include "preferences/ActiveWindow.h"
#include "preferences/DropLine.h"
#include "preferences/RowSlot.h"
#include "preferences/RowTableSource.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr int kPitch = 56;

/// Two buttons and a number.
class NumberRow final : public QWidget {
public:
    explicit NumberRow(QWidget *parent) : QWidget(parent) {
        first_->setGeometry(0, 0, 40, 20);
        second_->setGeometry(50, 0, 40, 20);
    }

    QPushButton *first_ = new QPushButton(this);
    QPushButton *second_ = new QPushButton(this);
    int number_ = -1;
    bool isSelected_ = false;
    bool takesAllKeys_ = false;
};

class NumberSource final : public RowTableSource {
public:
    [[nodiscard]] int rowCount() const override { return static_cast<int>(numbers_.size()); }
    [[nodiscard]] QWidget *makeRow(QWidget *parent) override {
        ++made_;
        return new NumberRow(parent);
    }
    void configureRow(QWidget *widget, int row) override {
        ++configured_;
        dynamic_cast<NumberRow &>(*widget).number_ = numbers_.at(static_cast<std::size_t>(row));
    }
    void setRowSelected(QWidget *widget, bool selected) override {
        dynamic_cast<NumberRow &>(*widget).isSelected_ = selected;
    }
    [[nodiscard]] bool rowTakesAllKeys(QWidget *widget) const override {
        return dynamic_cast<NumberRow &>(*widget).takesAllKeys_;
    }
    void rowLeftView(QWidget *widget) override {
        left_.insert(dynamic_cast<NumberRow &>(*widget).number_);
    }
    [[nodiscard]] QString rowName(int row) const override {
        return u"Number %1"_s.arg(numbers_.at(static_cast<std::size_t>(row)));
    }
    [[nodiscard]] bool acceptDrop(const QString &text, int gap) override {
        drops_.append(u"%1 above %2"_s.arg(text).arg(gap));
        return takesDrops_;
    }
    void moveRow(int source, int destination) override {
        const auto first = numbers_.begin();
        std::swap(*(first + source), *(first + destination));
        table_->reload();
    }

    void setCount(int count) {
        numbers_.clear();
        for (int i = 0; i < count; ++i)
            numbers_.push_back(i);
    }

    RowTableView *table_ = nullptr;
    std::vector<int> numbers_;
    std::set<int> left_;
    QStringList drops_;
    bool takesDrops_ = true;
    int made_ = 0;
    int configured_ = 0;
};

class RowTableTest : public testing::Test {
protected:
    RowTableTest() {
        auto *const layout = new QVBoxLayout(&window_);
        layout->setContentsMargins({});
        layout->addWidget(before_);
        layout->addWidget(table_);
        layout->addWidget(after_);
        source_.table_ = table_;
        table_->setFixedHeight(5 * kPitch);
        window_.resize(400, 400);
    }

    void show(int count) {
        window_.show();
        ASSERT_TRUE(activate(window_));
        source_.setCount(count);
        table_->reload();
    }
    [[nodiscard]] NumberRow *row(int index) const {
        return dynamic_cast<NumberRow *>(table_->rowWidget(index));
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    /// Does the viewport show the whole row?
    [[nodiscard]] bool isInView(int index) const {
        const int top = table_->rows().top(index) - table_->offset();
        return top >= 0 && top + 52 <= table_->viewport()->height();
    }
    void scrollTo(int offset) { table_->verticalScrollBar()->setValue(offset); }

    [[nodiscard]] bool drag(QEvent::Type type, int y, const QString &text = u"0"_s) {
        mime_.setText(text);
        const QPoint point(100, y);
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        std::unique_ptr<QDropEvent> event;
        if (type == QEvent::DragEnter)
            event = std::make_unique<QDragEnterEvent>(point, actions, &mime_, Qt::LeftButton,
                                                      Qt::NoModifier);
        else if (type == QEvent::DragMove)
            event = std::make_unique<QDragMoveEvent>(point, actions, &mime_, Qt::LeftButton,
                                                     Qt::NoModifier);
        else
            event = std::make_unique<QDropEvent>(point, actions, &mime_, Qt::LeftButton,
                                                 Qt::NoModifier);
        event->ignore();
        QApplication::sendEvent(table_->viewport(), event.get());
        return event->isAccepted();
    }
    [[nodiscard]] DropLine *line() const { return table_->viewport()->findChild<DropLine *>(); }

    NumberSource source_;
    FakeTimers timers_;
    QMimeData mime_;
    QWidget window_;
    QPushButton *before_ = new QPushButton;
    RowTableView *table_ = new RowTableView(source_, timers_, 52, 4);
    QPushButton *after_ = new QPushButton;
};

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

TEST_F(RowTableTest, selectsByKeyAndScrollsThere) {
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

TEST_F(RowTableTest, startsAtTheEndWhenUpIsPressedWithoutASelection) {
    show(100);
    table_->setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(table_->selectedRow(), 99);
}

TEST_F(RowTableTest, bearsKeysWithoutRows) {
    show(0);
    table_->setFocus();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown})
        press(key);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(table_->selectedRow(), RowTableView::kNoRow);
}

TEST_F(RowTableTest, movesTheSelectedRowByKey) {
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

TEST_F(RowTableTest, movesNoRowBeyondTheEnds) {
    show(2);
    table_->setFocus();
    table_->selectRow(0);
    press(Qt::Key_Up, Qt::AltModifier);
    table_->selectRow(1);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_, (std::vector{0, 1}));
}

TEST_F(RowTableTest, takesTheFocusAlongWithAMovedRow) {
    show(10);
    row(2)->second_->setFocus();
    EXPECT_EQ(table_->selectedRow(), 2);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(source_.numbers_[3], 2);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowTableTest, goesToTheSameControlOfTheNextRow) {
    show(10);
    row(2)->second_->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(table_->selectedRow(), 3);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
    press(Qt::Key_End);
    EXPECT_TRUE(isInView(9));
    EXPECT_EQ(QApplication::focusWidget(), row(9)->second_);
}

TEST_F(RowTableTest, leavesAllKeysToARowThatWantsThem) {
    show(10);
    row(2)->first_->setFocus();
    row(2)->takesAllKeys_ = true;
    press(Qt::Key_PageDown);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(table_->selectedRow(), 2);
    EXPECT_EQ(source_.numbers_[2], 2);
}

TEST_F(RowTableTest, opensByReturnOrDoubleClick) {
    show(10);
    const QSignalSpy opened(table_, &RowTableView::activated);
    table_->setFocus();
    press(Qt::Key_Return);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(opened.count(), 2);
    QTest::mouseDClick(table_->viewport(), Qt::LeftButton, {}, QPoint(200, kPitch / 2));
    EXPECT_EQ(opened.count(), 3);
    row(1)->first_->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(opened.count(), 3);
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

TEST_F(RowTableTest, goesByTabThroughTheControlsOfTheSelectedRowAndOn) {
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

TEST_F(RowTableTest, goesBackByTabThroughTheControls) {
    show(10);
    row(3)->second_->setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->first_);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), table_);
}

TEST_F(RowTableTest, leavesOutControlsThatCannotBeUsed) {
    show(10);
    table_->selectRow(3);
    row(3)->first_->setEnabled(false);
    table_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), row(3)->second_);
}

TEST_F(RowTableTest, selectsARowWhenTabComesIn) {
    show(100);
    scrollTo(10 * kPitch);
    before_->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(table_->selectedRow(), 10);
    EXPECT_TRUE(table_->slot(10)->hasFocusRing());
    press(Qt::Key_Tab);
    EXPECT_FALSE(table_->slot(10)->hasFocusRing());
}

TEST_F(RowTableTest, bringsTheSelectedRowIntoViewForTab) {
    show(100);
    table_->selectRow(0);
    table_->setFocus();
    scrollTo(50 * kPitch);
    press(Qt::Key_Tab);
    EXPECT_TRUE(isInView(0));
    EXPECT_EQ(QApplication::focusWidget(), row(0)->first_);
}

TEST_F(RowTableTest, selectsTheRowThatGetsTheFocusAndShowsAllOfIt) {
    show(100);
    scrollTo(30);
    row(0)->first_->setFocus();
    EXPECT_EQ(table_->selectedRow(), 0);
    EXPECT_TRUE(isInView(0));
}

TEST_F(RowTableTest, keepsTheFocusedRowWhileItIsOutOfSight) {
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

TEST_F(RowTableTest, tellsWhichRowsLeaveTheView) {
    show(100);
    row(2)->first_->setFocus();
    scrollTo(2 * kPitch);
    EXPECT_EQ(source_.left_, (std::set{0, 1}));
    scrollTo(4 * kPitch);
    EXPECT_EQ(source_.left_, (std::set{0, 1, 2, 3}));
}

TEST_F(RowTableTest, bringsTheFocusedRowIntoViewForAKey) {
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

TEST_F(RowTableTest, dragsAPictureThroughWhichTheListIsSeen) {
    show(10);
    table_->selectRow(1);
    const QImage picture = table_->slot(1)->dragPicture().toImage();
    EXPECT_EQ(picture.size(), table_->slot(1)->size() * picture.devicePixelRatio());
    for (const QPoint place : {QPoint(0, 26), QPoint(20, 10), QPoint(200, 26)})
        EXPECT_NEAR(picture.pixelColor(place).alphaF(), 0.6, 0.01);
    table_->setFocus();
    ASSERT_TRUE(table_->slot(1)->hasFocusRing());
    EXPECT_EQ(table_->slot(1)->dragPicture().toImage(), picture);
}

TEST_F(RowTableTest, keepsTheFocusWhenTheRowsBeforeItRemain) {
    show(100);
    row(2)->first_->setFocus();
    source_.setCount(3);
    table_->reload();
    EXPECT_EQ(QApplication::focusWidget(), row(2)->first_);
}

TEST_F(RowTableTest, takesTheFocusOfARowThatIsGone) {
    show(100);
    row(2)->first_->setFocus();
    source_.setCount(2);
    table_->reload();
    EXPECT_EQ(QApplication::focusWidget(), table_);
    EXPECT_EQ(table_->selectedRow(), 1);
}

TEST_F(RowTableTest, showsADropLineInTheGap) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_EQ(line()->geometry().center().y() + 1, 2 * kPitch);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch + 5));
    EXPECT_EQ(line()->geometry().center().y() + 1, 3 * kPitch);
    QDragLeaveEvent leave;
    QApplication::sendEvent(table_->viewport(), &leave);
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowTableTest, refusesADropOnARow) {
    show(10);
    // What enters on a row may still go on to a gap.
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch / 2));
    EXPECT_FALSE(drag(QEvent::Drop, kPitch / 2));
    EXPECT_TRUE(source_.drops_.isEmpty());
}

TEST_F(RowTableTest, takesTheDropLineAwayOverARow) {
    show(10);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch + kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_TRUE(drag(QEvent::DragMove, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
}

TEST_F(RowTableTest, handsADropToItsSource) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(drag(QEvent::Drop, kPitch, u"7"_s));
    EXPECT_EQ(source_.drops_, QStringList{u"7 above 2"_s});
    EXPECT_FALSE(line()->isVisible());
    source_.takesDrops_ = false;
    EXPECT_FALSE(drag(QEvent::Drop, kPitch, u"x"_s));
}

TEST_F(RowTableTest, refusesADragWithoutText) {
    show(10);
    mime_.setData(u"image/png"_s, "x");
    QDragEnterEvent event(QPoint(100, 0), Qt::MoveAction | Qt::CopyAction, &mime_, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(table_->viewport(), &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowTableTest, scrollsUnderADragNearTheEdge) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    timers_.advance(160ms);
    const int offset = table_->offset();
    EXPECT_GT(offset, 0);
    timers_.advance(160ms);
    EXPECT_GT(table_->offset(), offset);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch - table_->offset() % kPitch));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(RowTableTest, scrollsNoMoreAfterTheDrop) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    EXPECT_TRUE(drag(QEvent::Drop, 5 * kPitch - 2));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(RowTableTest, isAListOfAllItsRows) {
    show(1000);
    table_->selectRow(1);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(table_);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 1000);
    for (const int index : {0, 1, 700}) {
        QAccessibleInterface *const item = list->child(index);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->role(), QAccessible::ListItem);
        EXPECT_EQ(item->text(QAccessible::Name), u"Number %1"_s.arg(index));
        EXPECT_EQ(item->parent(), list);
        EXPECT_EQ(list->indexOfChild(item), index);
        EXPECT_EQ(item->state().selected, index == 1);
        EXPECT_EQ(list->child(index), item);
    }
    EXPECT_EQ(list->child(1000), nullptr);
}

TEST_F(RowTableTest, hasTheControlsOfARowUnderIt) {
    show(10);
    QAccessibleInterface *const item = QAccessible::queryAccessibleInterface(table_)->child(2);
    ASSERT_EQ(item->childCount(), 1);
    EXPECT_EQ(item->child(0)->childCount(), 2);
}

TEST_F(RowTableTest, findsRowsByTheirPlaceOnTheScreen) {
    show(1000);
    scrollTo(100 * kPitch);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(table_);
    const QPoint point = table_->viewport()->mapToGlobal(QPoint(50, kPitch + 10));
    ASSERT_NE(list->childAt(point.x(), point.y()), nullptr);
    EXPECT_EQ(list->indexOfChild(list->childAt(point.x(), point.y())), 101);
    EXPECT_EQ(list->childAt(-10, -10), nullptr);
}

TEST_F(RowTableTest, letsAScreenReaderGoToARowOutOfSight) {
    show(1000);
    const QSignalSpy opened(table_, &RowTableView::activated);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(table_);
    QAccessibleActionInterface *const actions = list->child(700)->actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(table_->selectedRow(), 700);
    EXPECT_TRUE(isInView(700));
    EXPECT_EQ(list->focusChild(), list->child(700));
    EXPECT_EQ(opened.count(), 0);
    list->child(700)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened.count(), 1);
}

}  // namespace
}  // namespace kestrelbay
