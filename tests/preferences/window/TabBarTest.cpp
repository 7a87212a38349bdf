#include "preferences/window/TabBarView.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include "fixtures/ActiveWindow.h"
#include "fixtures/PaintCounter.h"
#include "fixtures/ServicesFixture.h"
#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class TabBar : public ServicesFixture {
protected:
    TabBar() {
        window_.resize(400, 100);
        bar_.setGeometry(10, 20, 330, 32);
        QObject::connect(&bar_, &TabBarView::onSelect, &bar_,
                         [this](int index) { chosen_.append(index); });
        window_.show();
        EXPECT_TRUE(activate(window_));
    }

    [[nodiscard]] TabItemView &item(qsizetype index) const { return *bar_.itemViews().at(index); }
    void expectSelected(int index) const {
        EXPECT_EQ(bar_.selectedIndex(), index);
        EXPECT_EQ(item(0).isSelected(), index == 0);
        EXPECT_EQ(item(1).isSelected(), index == 1);
    }

    QWidget window_;
    TabBarView bar_{&window_};
    QList<int> chosen_;
};

TEST_F(TabBar, ItsTitlesAreInTheLanguageInForce) {
    EXPECT_EQ(TabBarView::labels(), (QStringList{u"Shortcut Rules"_s, u"Advanced"_s}));
    choose(Language::zh);
    EXPECT_EQ(TabBarView::labels(), (QStringList{u"快捷键规则"_s, u"高级设置"_s}));
    EXPECT_EQ(item(0).title(), u"Shortcut Rules"_s);
}

TEST_F(TabBar, TheFirstTabIsSelectedAtFirst) {
    expectSelected(0);
    EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(TabBar, TabsAreThreePointsFromEdgesAndEachOther) {
    EXPECT_EQ(item(0).frame(), QRectF(3, 3, 160.5, 26));
    EXPECT_EQ(item(1).frame(), QRectF(166.5, 3, 160.5, 26));
}

TEST_F(TabBar, AClickSelectsAndTells) {
    bar_.clicked({200, 16});
    expectSelected(1);
    EXPECT_EQ(chosen_, QList<int>{1});
    bar_.clicked({200, 16});
    EXPECT_EQ(chosen_, (QList<int>{1, 1}));
}

TEST_F(TabBar, BetweenTabsAndOnTheMarginNothingHappens) {
    bar_.clicked({200, 16});
    chosen_.clear();
    for (const QPointF place : {QPointF(165, 16), QPointF(1, 16), QPointF(329, 16), QPointF(80, 1),
                                QPointF(80, 31), QPointF(-5, 16)})
        bar_.clicked(place);
    expectSelected(1);
    EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(TabBar, TheMouseClicks) {
    QTest::mouseClick(&bar_, Qt::LeftButton, {}, {200, 16});
    expectSelected(1);
    EXPECT_EQ(chosen_, QList<int>{1});
    QTest::mouseClick(&bar_, Qt::RightButton, {}, {80, 16});
    expectSelected(1);
    QTest::mousePress(&bar_, Qt::LeftButton, {}, {80, 16});
    QTest::mouseRelease(&bar_, Qt::LeftButton, {}, {200, 16});
    expectSelected(1);
    EXPECT_EQ(chosen_, QList<int>{1});
}

TEST_F(TabBar, SelectOnlyMovesTheHighlight) {
    bar_.select(1);
    expectSelected(1);
    EXPECT_TRUE(chosen_.isEmpty());
    for (const int beyond : {2, 100, -1})
        bar_.select(beyond);
    expectSelected(1);
}

TEST_F(TabBar, ArrowKeysChoose) {
    item(0).setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(0).hasFocus(); }));
    QTest::keyClick(&item(0), Qt::Key_Right);
    expectSelected(1);
    EXPECT_TRUE(item(1).hasFocus());
    QTest::keyClick(&item(1), Qt::Key_Right);
    EXPECT_EQ(chosen_, QList<int>{1});
    QTest::keyClick(&item(1), Qt::Key_Left);
    expectSelected(0);
    EXPECT_TRUE(item(0).hasFocus());
    QTest::keyClick(&item(0), Qt::Key_End);
    QTest::keyClick(&item(1), Qt::Key_Home);
    EXPECT_EQ(chosen_, (QList<int>{1, 0, 1, 0}));
}

TEST_F(TabBar, OnlyTheSelectedTabIsReachedByTab) {
    EXPECT_EQ(item(0).focusPolicy(), Qt::TabFocus);
    EXPECT_EQ(item(1).focusPolicy(), Qt::NoFocus);
    bar_.select(1);
    EXPECT_EQ(item(0).focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(item(1).focusPolicy(), Qt::TabFocus);
}

TEST_F(TabBar, KeyboardFocusIsSeen) {
    const QImage unfocused = item(0).grab().toImage();
    window_.setAttribute(Qt::WA_KeyboardFocusChange);
    item(0).setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(0).hasFocus(); }));
    EXPECT_NE(item(0).grab().toImage(), unfocused);
}

TEST_F(TabBar, TheSelectedTitleIsHeavier) {
    EXPECT_EQ(item(0).font().weight(), QFont::Medium);
    EXPECT_EQ(item(1).font().weight(), QFont::Normal);
    EXPECT_EQ(item(0).font().pixelSize(), 13);
    EXPECT_EQ(item(1).font().pixelSize(), 13);
}

TEST_F(TabBar, TheSelectedTabIsFilledWithTheAccentOfTheAppearance) {
    const QPoint inItem(8, 13);
    EXPECT_EQ(item(0).grab().toImage().pixelColor(inItem), colors::controlAccent());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    PaintCounter paints(item(0));
    paints.settle();
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() > 0; }));
    EXPECT_EQ(item(0).grab().toImage().pixelColor(inItem), colors::controlAccent());
    QApplication::setPalette(systemPalette(ColorScheme::Light));
    bar_.select(1);
    EXPECT_NE(item(0).grab().toImage().pixelColor(inItem), colors::controlAccent());
}

TEST_F(TabBar, ScreenReadersSeeAListOfTabs) {
    const QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(&bar_);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::PageTabList);
    ASSERT_EQ(list->childCount(), 2);
    const QAccessibleInterface *const first = list->child(0);
    const QAccessibleInterface *const second = list->child(1);
    EXPECT_EQ(first->role(), QAccessible::PageTab);
    EXPECT_EQ(first->text(QAccessible::Name), u"Shortcut Rules"_s);
    EXPECT_EQ(second->text(QAccessible::Name), u"Advanced"_s);
    EXPECT_TRUE(first->state().selectable);
    EXPECT_TRUE(first->state().selected);
    EXPECT_FALSE(second->state().selected);
    bar_.select(1);
    EXPECT_FALSE(first->state().selected);
    EXPECT_TRUE(second->state().selected);
}

TEST_F(TabBar, ScreenReadersChooseTabs) {
    QAccessibleActionInterface *const actions =
        QAccessible::queryAccessibleInterface(&item(1))->actionInterface();
    ASSERT_NE(actions, nullptr);
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    expectSelected(1);
    EXPECT_EQ(chosen_, QList<int>{1});
}

}  // namespace

}  // namespace kestrelbay
