#include "preferences/PreferencesWindowController.h"

#include <functional>
#include <memory>
#include <vector>

#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "app/Sheet.h"
#include "app/TextLabel.h"
#include "preferences/ActiveWindow.h"
#include "preferences/AdvancedSettingsViewController.h"
#include "preferences/ContainerViewController.h"
#include "preferences/DeleteConfirmationSheet.h"
#include "preferences/Restart.h"
#include "preferences/RowTableView.h"
#include "preferences/RuleRowView.h"
#include "preferences/RulesViewController.h"
#include "preferences/ServicesFixture.h"
#include "preferences/SettingRow.h"
#include "preferences/SymbolView.h"
#include "preferences/TabBarView.h"
#include "preferences/TabItemView.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class PreferencesWindow : public ServicesFixture {
protected:
    PreferencesWindowController &controller() {
        if (!controller_)
            controller_ = std::make_unique<PreferencesWindowController>(services());
        return *controller_;
    }
    QWidget &window() { return *controller().window(); }
    /// The only one that is not about to go.
    template <typename View>
    View *view() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QList<View *> views = window().findChildren<View *>();
        EXPECT_LE(views.size(), 1);
        return views.isEmpty() ? nullptr : views.first();
    }
    void clickTab(int index) {
        QTest::mouseClick(view<TabBarView>(), Qt::LeftButton, {}, {index == 0 ? 80 : 240, 16});
    }
    void expectTab(int index) {
        EXPECT_EQ(view<TabBarView>()->selectedIndex(), index);
        EXPECT_EQ(view<RulesViewController>() != nullptr, index == 0);
        EXPECT_EQ(view<AdvancedSettingsViewController>() != nullptr, index == 1);
    }
    QString secondTitle() { return view<TabBarView>()->itemViews().at(1)->title(); }

private:
    std::unique_ptr<PreferencesWindowController> controller_;
};

TEST_F(PreferencesWindow, IsAHiddenWindowWithTheRulesAtFirst) {
    EXPECT_TRUE(window().isWindow());
    EXPECT_TRUE(window().isHidden());
    EXPECT_EQ(window().size(), QSize(704, 598));
    EXPECT_EQ(window().minimumSize(), QSize(616, 483));
    EXPECT_EQ(window().windowTitle(), u"KestrelBay Preferences"_s);
    expectTab(0);
}

TEST_F(PreferencesWindow, HasItsTitleInChinese) {
    choose(Language::zh);
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
}

TEST_F(PreferencesWindow, LiesFromLeftToRightWhateverTheProgramDoes) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view<TabBarView>()->layoutDirection(), Qt::LeftToRight);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(PreferencesWindow, TheListKeepsTheKeyboardWhenItsLastRuleIsDeleted) {
    for (int i = 0; i < 3; ++i)
        manager().addRule({});
    controller().showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    const RowTableView *const table = view<RowTableView>();
    auto *const remove = table->rowWidget(2)->findChildren<QAbstractButton *>().last();
    remove->setFocus(Qt::TabFocusReason);
    QTest::keyClick(remove, Qt::Key_Space);
    const QPointer sheet = view<DeleteConfirmationSheet>();
    ASSERT_TRUE(sheet);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == sheet; }));
    sheet->accept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet; }));
    EXPECT_EQ(manager().rules().size(), 2U);
    ASSERT_TRUE(activate(window()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->hasFocus(); }));
    EXPECT_EQ(table->selectedRow(), 1);
}

TEST_F(PreferencesWindow, AnotherLanguageEndsARecording) {
    manager().addRule({});
    controller().showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    view<RuleRowView>()->hotkeyRecorder()->startRecordingByUser();
    mainQueue_.runAll();
    ASSERT_TRUE(tap_.isRecording());
    changeLanguage(Language::zh);
    EXPECT_FALSE(manager().recordingCallback());
    EXPECT_FALSE(tap_.isRecording());
    mainQueue_.runAll();
    EXPECT_FALSE(manager().recordingCallback());
}

TEST_F(PreferencesWindow, ShowWindowBringsItForward) {
    controller().showWindow();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(nativeWindow_.takeCalls(),
              QStringList{u"bringProgramForward %1"_s.arg(window().winId())});
}

TEST_F(PreferencesWindow, ItComesUpInTheMiddleOfTheScreenAndStaysWhereItIsPut) {
    controller().showWindow();
    const QPoint middle = window().screen()->availableGeometry().center();
    // How wide its frame is shows only when it is there.
    EXPECT_LE((window().geometry().center() - middle).manhattanLength(), 4);
    window().move(30, 40);
    const QPoint put = window().pos();
    window().close();
    controller().showWindow();
    EXPECT_EQ(window().pos(), put);
}

TEST_F(PreferencesWindow, TheBarIsCenteredAboveTheContent) {
    controller().showWindow();
    for (const QSize size : {QSize(704, 598), QSize(616, 483), QSize(900, 700)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(view<TabBarView>()->geometry(), QRect((window().width() - 330) / 2, 12, 330, 32));
        const QWidget *const content = view<ContainerViewController>()->contentArea();
        EXPECT_EQ(content->geometry(), QRect(0, 52, window().width(), window().height() - 52));
        EXPECT_EQ(view<RulesViewController>()->geometry(), content->rect());
    }
}

TEST_F(PreferencesWindow, AClickOnATabShowsItsView) {
    controller().showWindow();
    clickTab(1);
    expectTab(1);
    EXPECT_TRUE(view<AdvancedSettingsViewController>()->isVisible());
    clickTab(0);
    expectTab(0);
}

TEST_F(PreferencesWindow, EveryVisitReadsTheRulesAgain) {
    controller().showWindow();
    const QPointer<RulesViewController> first = view<RulesViewController>();
    clickTab(1);
    manager().addRule({.appName = u"Mail"_s});
    clickTab(0);
    const RulesViewController *const second = view<RulesViewController>();
    EXPECT_TRUE(first.isNull());
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->emptyLabel()->isHidden());
}

TEST_F(PreferencesWindow, IconsAreKeptFromTabToTabAndReadAgainAtEveryVisit) {
    manager().addRule({.appName = u"Mail"_s, .appPath = u"/mail"_s});
    const auto readIcons = [this] {
        mainQueue_.runAll();
        backgroundQueue_.runAll();
        mainQueue_.runAll();
    };
    const auto shownIcon = [this] {
        return view<RuleRowView>()->findChild<SymbolView *>()->grab().toImage().pixelColor(14, 14);
    };
    const auto install = [this](const QColor &color) {
        QPixmap pixmap(28, 28);
        pixmap.fill(color);
        catalog_.add(u"/mail"_s, u"Mail"_s, QIcon(pixmap));
    };
    install(Qt::red);
    controller().showWindow();
    readIcons();
    EXPECT_EQ(shownIcon(), QColor(Qt::red));
    clickTab(1);
    install(Qt::green);
    clickTab(0);
    EXPECT_EQ(shownIcon(), QColor(Qt::red));
    readIcons();
    EXPECT_EQ(shownIcon(), QColor(Qt::green));
    install(Qt::blue);
    window().close();
    controller().showWindow();
    readIcons();
    EXPECT_EQ(shownIcon(), QColor(Qt::blue));
    EXPECT_EQ(catalog_.listIconRequests().size(), 3);
}

TEST_F(PreferencesWindow, ClosedItComesBackWithItsTab) {
    controller().showWindow();
    clickTab(1);
    QWidget *const before = controller().window();
    window().close();
    EXPECT_FALSE(window().isVisible());
    controller().showWindow();
    EXPECT_EQ(controller().window(), before);
    EXPECT_TRUE(window().isVisible());
    expectTab(1);
}

TEST_F(PreferencesWindow, MinimizedItComesBack) {
    controller().showWindow();
    window().setWindowState(Qt::WindowMinimized);
    controller().showWindow();
    EXPECT_FALSE(window().isMinimized());
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PreferencesWindow, AnotherLanguageRebuildsItInPlace) {
    controller().showWindow();
    clickTab(1);
    const QPointer<ContainerViewController> before = view<ContainerViewController>();
    changeLanguage(Language::zh);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
    expectTab(1);
    EXPECT_TRUE(before.isNull());
    EXPECT_TRUE(view<AdvancedSettingsViewController>()->isVisible());
    EXPECT_EQ(view<ContainerViewController>()->size(), window().size());
    clickTab(0);
    expectTab(0);
}

TEST_F(PreferencesWindow, AHiddenWindowIsRebuiltHidden) {
    EXPECT_EQ(secondTitle(), u"Advanced"_s);
    changeLanguage(Language::zh);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    EXPECT_EQ(secondTitle(), u"高级设置"_s);
    expectTab(0);
}

TEST_F(PreferencesWindow, TheSameLanguageRebuildsItToo) {
    controller().showWindow();
    const QPointer<ContainerViewController> before = view<ContainerViewController>();
    changeLanguage(Language::en);
    expectTab(0);
    EXPECT_TRUE(before.isNull());
}

TEST_F(PreferencesWindow, ThePopupThatChangesTheLanguageKeepsTheFocus) {
    controller().showWindow();
    ASSERT_TRUE(activate(window()));
    clickTab(1);
    auto *const popup = window().findChild<QComboBox *>(u"language"_s);
    popup->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return popup->hasFocus(); }));
    const QPointer<QComboBox> before = popup;
    QTest::keyClick(popup, Qt::Key_Up);
    expectTab(1);
    EXPECT_TRUE(before.isNull());
    EXPECT_EQ(defaults_.string(u"appLanguage"_s), u"zh"_s);
    EXPECT_EQ(window().windowTitle(), u"KestrelBay 偏好设置"_s);
    QComboBox *const after = window().findChild<QComboBox *>(u"language"_s);
    EXPECT_EQ(QApplication::focusWidget(), after);
    EXPECT_EQ(after->currentText(), u"中文"_s);
}

TEST_F(PreferencesWindow, LeadsToTheAccessibilityRow) {
    tap_.setPermission(false);
    controller().switchToAccessibilityRow();
    EXPECT_TRUE(window().isVisible());
    expectTab(1);
    SettingRow *const row = view<AdvancedSettingsViewController>()->accessibilityRow();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    mainQueue_.runAll();
    EXPECT_EQ(timers_.waitingCount(), 4U);
}

TEST_F(PreferencesWindow, LeadsThereAgainWithAFreshView) {
    controller().switchToAccessibilityRow();
    mainQueue_.runAll();
    const QPointer<AdvancedSettingsViewController> before = view<AdvancedSettingsViewController>();
    controller().switchToAccessibilityRow();
    expectTab(1);
    EXPECT_TRUE(before.isNull());
}

TEST_F(PreferencesWindow, NothingIsHighlightedOnceItIsTooLate) {
    controller().switchToAccessibilityRow();
    clickTab(0);
    mainQueue_.runAll();
    EXPECT_EQ(timers_.waitingCount(), 0U);
    auto other = std::make_unique<PreferencesWindowController>(services());
    other->switchToAccessibilityRow();
    other.reset();
    mainQueue_.runAll();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(PreferencesWindow, ASheetKeepsItsTabUntilItIsClosed) {
    controller().showWindow();
    view<RulesViewController>()->addRule();
    Sheet *const sheet = view<Sheet>();
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

TEST_F(PreferencesWindow, WhatASheetWasOpenedForIsDoneBeforeTheTabChanges) {
    manager().addRule({.appName = u"Mail"_s});
    controller().showWindow();
    bool isDone = false;
    auto *const sheet =
        DeleteConfirmationSheet::open(&window(), u"Mail"_s, [&isDone] { isDone = true; });
    controller().switchToAccessibilityRow();
    expectTab(0);
    sheet->accept();
    EXPECT_TRUE(isDone);
    mainQueue_.runAll();
    expectTab(1);
}

TEST_F(PreferencesWindow, SheetsGoWithTheirTab) {
    manager().addRule({.appName = u"Mail"_s});
    controller().showWindow();
    const auto openEach = [this] {
        return std::vector<std::function<void()>>{
            [this] { view<RulesViewController>()->addRule(); },
            [this] {
                view<RulesViewController>()->tableView()->selectRow(0);
                view<RulesViewController>()->editRule();
            },
            [this] { DeleteConfirmationSheet::open(&window(), u"Mail"_s, [] { FAIL(); }); },
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

TEST_F(PreferencesWindow, ControlWClosesIt) {
    controller().showWindow();
    ASSERT_TRUE(activate(window()));
    QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PreferencesWindow, ControlQEndsTheProgram) {
    controller().showWindow();
    ASSERT_TRUE(activate(window()));
    const QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    QTimer::singleShot(0, qApp,
                       [this] { QTest::keyClick(&window(), Qt::Key_Q, Qt::ControlModifier); });
    QApplication::exec();
    EXPECT_EQ(quits.count(), 1);
}

TEST_F(PreferencesWindow, TabsAndControlsAreReachedByTheTabKey) {
    tap_.setPermission(false);
    controller().showWindow();
    ASSERT_TRUE(activate(window()));
    clickTab(1);
    view<TabBarView>()->itemViews().at(1)->setFocus();
    QStringList reached;
    for (int i = 0; i < 7; ++i) {
        reached.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, (QStringList{u"tab1"_s, u"launchAtLogin"_s, u"language"_s, u"sound"_s,
                                    u"toast"_s, u"configFolder"_s, u"accessibility"_s}));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"tab1"_s);
}

}  // namespace

}  // namespace kestrelbay
