#include <functional>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "fixtures/ActiveWindow.h"
#include "preferences/advanced/Restart.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/window/PreferencesWindowFixture.h"
#include "ui/list/RowDelegate.h"
#include "ui/list/RowListView.h"
#include "ui/windows/Sheet.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class PreferencesSheets : public PreferencesWindowFixture {};

TEST_F(PreferencesSheets, TheListKeepsTheKeyboardWhenItsLastRuleIsDeleted) {
    for (int i = 0; i < 3; ++i)
        manager().addRule({});
    controller().showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    const RowListView *const list = view<RowListView>();
    auto *const remove = list->rowWidget(2)->findChildren<QAbstractButton *>().last();
    remove->setFocus(Qt::TabFocusReason);
    QTest::keyClick(remove, Qt::Key_Space);
    const QPointer sheet = view<AlertSheet>();
    ASSERT_TRUE(sheet);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == sheet; }));
    sheet->accept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet; }));
    EXPECT_EQ(manager().rules().size(), 2U);
    ASSERT_TRUE(activate(window()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->hasFocus(); }));
    EXPECT_EQ(list->selectedRow(), 1);
}

TEST_F(PreferencesSheets, ASheetKeepsItsTabUntilItIsClosed) {
    controller().showWindow();
    view<RulesViewController>()->addRule();
    auto *const sheet = view<Sheet>();
    ASSERT_NE(sheet, nullptr);
    controller().switchToAccessibilityRow();
    controller().switchToAccessibilityRow();
    mainQueue_.runAll();
    expectTab(0);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(sheet));
    const QSignalSpy finished(sheet, &QDialog::finished);
    sheet->reject();
    expectTab(0);
    mainQueue_.runAll();
    expectTab(1);
    EXPECT_EQ(timers_.waitingCount(), 4U);
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(PreferencesSheets, WhatASheetWasOpenedForIsDoneBeforeTheTabChanges) {
    manager().addRule({.appName = u"Mail"_s});
    controller().showWindow();
    bool isDone = false;
    auto *const sheet = openDeleteConfirmation(&window(), u"Mail"_s, [&isDone] { isDone = true; });
    controller().switchToAccessibilityRow();
    expectTab(0);
    sheet->accept();
    EXPECT_TRUE(isDone);
    mainQueue_.runAll();
    expectTab(1);
}

TEST_F(PreferencesSheets, WhoWaitsForASheetHearsOnceWhenItIsClosed) {
    controller().showWindow();
    EXPECT_FALSE(controller().waitsForSheet());
    const QSignalSpy closed(&controller(), &PreferencesWindowController::sheetClosed);
    bool isDone = false;
    AlertSheet *const sheet =
        openDeleteConfirmation(&window(), u"Mail"_s, [&isDone] { isDone = true; });
    EXPECT_TRUE(controller().waitsForSheet());
    EXPECT_TRUE(controller().waitsForSheet());
    sheet->accept();
    EXPECT_TRUE(isDone);
    EXPECT_EQ(closed.count(), 0);
    mainQueue_.runAll();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(controller().waitsForSheet());
}

TEST_F(PreferencesSheets, SheetsGoWithTheirTab) {
    manager().addRule({.appName = u"Mail"_s});
    controller().showWindow();
    const auto openEach = [this] {
        return std::vector<std::function<void()>>{
            [this] { view<RulesViewController>()->addRule(); },
            [this] {
                view<RulesViewController>()->listView()->selectRow(0);
                view<RulesViewController>()->editRule();
            },
            [this] { openDeleteConfirmation(&window(), u"Mail"_s, [] { FAIL(); }); },
            [this] { openRestartSheet(&window(), [] { FAIL(); }); }};
    };
    for (const auto &open : openEach()) {
        open();
        const QPointer<Sheet> sheet = view<Sheet>();
        ASSERT_NE(sheet, nullptr);
        const QSignalSpy rejected(sheet, &QDialog::rejected);
        changeLanguage(Language::zh);
        EXPECT_EQ(rejected.count(), 1);
        EXPECT_EQ(view<Sheet>(), nullptr);
        EXPECT_TRUE(sheet.isNull());
        expectTab(0);
    }
    EXPECT_EQ(manager().rules().size(), 1U);
}

}  // namespace

}  // namespace kestrelbay
