#include <QAccessible>
#include <QSignalSpy>

#include "ui/list/RowListFixture.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;

class RowListAccessibleTest : public RowListFixture {};

TEST_F(RowListAccessibleTest, isAListOfAllItsRows) {
    show(1000);
    list_->selectRow(1);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(list_);
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

TEST_F(RowListAccessibleTest, hasTheControlsOfARowUnderIt) {
    show(10);
    QAccessibleInterface *const item = QAccessible::queryAccessibleInterface(list_)->child(2);
    ASSERT_EQ(item->childCount(), 1);
    EXPECT_EQ(item->child(0)->childCount(), 2);
}

TEST_F(RowListAccessibleTest, findsRowsByTheirPlaceOnTheScreen) {
    show(1000);
    scrollTo(100 * kPitch);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(list_);
    const QPoint point = list_->viewport()->mapToGlobal(QPoint(50, kPitch + 10));
    ASSERT_NE(list->childAt(point.x(), point.y()), nullptr);
    EXPECT_EQ(list->indexOfChild(list->childAt(point.x(), point.y())), 101);
    EXPECT_EQ(list->childAt(-10, -10), nullptr);
}

TEST_F(RowListAccessibleTest, letsAScreenReaderGoToARowOutOfSight) {
    show(1000);
    const QSignalSpy opened(list_, &RowListView::activated);
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(list_);
    QAccessibleActionInterface *const actions = list->child(700)->actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(list_->selectedRow(), 700);
    EXPECT_TRUE(isInView(700));
    EXPECT_EQ(list->focusChild(), list->child(700));
    EXPECT_EQ(opened.count(), 0);
    list->child(700)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened.count(), 1);
}

}  // namespace
}  // namespace kestrelbay
