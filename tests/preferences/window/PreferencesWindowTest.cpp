#include "preferences/window/PreferencesWindowController.h"

#include <memory>

#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "fixtures/ActiveWindow.h"
#include "preferences/advanced/SettingRow.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/window/PreferencesWindowFixture.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class PreferencesWindow : public PreferencesWindowFixture {};

TEST_F(PreferencesWindow, IsAHiddenWindowWithTheRulesAtFirst) {
    EXPECT_TRUE(window().isWindow());
    EXPECT_TRUE(window().isHidden());
    EXPECT_EQ(window().size(), QSize(704, 598));
    EXPECT_EQ(window().minimumSize(), QSize(616, 483));
    EXPECT_EQ(window().windowTitle(), u"KestrelBay Preferences"_s);
    expectTab(0);
}

TEST_F(PreferencesWindow, LiesFromLeftToRightWhateverTheProgramDoes) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view<TabBarView>()->layoutDirection(), Qt::LeftToRight);
    QApplication::setLayoutDirection(Qt::LeftToRight);
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
        EXPECT_EQ(view<RulesViewController>()->geometry(),
                  QRect(0, 52, window().width(), window().height() - 52));
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

TEST_F(PreferencesWindow, ADeletionCanBeUndoneAsLongAsItIsOpen) {
    manager().addRule({.appName = u"Mail"_s});
    manager().addRule({.appName = u"Notes"_s});
    const auto deleteFirst = [this] {
        const ShortcutRule first = manager().rules().front();
        view<RulesViewController>()->ruleRowViewDidDelete(nullptr, first);
    };
    const auto undo = [this] {
        QTest::keyClick(view<RulesViewController>(), Qt::Key_Z, Qt::ControlModifier);
    };
    controller().showWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    deleteFirst();
    clickTab(1);
    clickTab(0);
    controller().showWindow();
    undo();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"Notes"_s}));

    deleteFirst();
    const auto undoByToast = lastToastAction_.run;
    deleteFirst();
    window().close();
    // The toast of before is still there.
    lastToastAction_.run();
    EXPECT_EQ(names(), QStringList{u"Notes"_s});
    controller().showWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    undo();
    undoByToast();
    EXPECT_EQ(names(), QStringList{u"Notes"_s});
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

TEST_F(PreferencesWindow, ForgottenViewsAreBuiltAnewAtTheirTabAndPlace) {
    controller().showWindow();
    clickTab(1);
    window().move(30, 40);
    const QPoint put = window().pos();
    window().close();
    controller().forgetViews();
    EXPECT_EQ(view<TabBarView>(), nullptr);
    EXPECT_EQ(view<AdvancedSettingsViewController>(), nullptr);
    controller().showWindow();
    expectTab(1);
    EXPECT_TRUE(view<AdvancedSettingsViewController>()->isVisible());
    EXPECT_EQ(window().pos(), put);
}

TEST_F(PreferencesWindow, ViewsInSightAreNotForgotten) {
    controller().showWindow();
    controller().forgetViews();
    EXPECT_NE(view<RulesViewController>(), nullptr);
}

TEST_F(PreferencesWindow, ForgottenViewsLeadToTheAccessibilityRow) {
    tap_.setPermission(false);
    controller().showWindow();
    window().close();
    controller().forgetViews();
    controller().switchToAccessibilityRow();
    expectTab(1);
    EXPECT_NE(view<AdvancedSettingsViewController>()->accessibilityRow(), nullptr);
}

TEST_F(PreferencesWindow, ADeletionOutlivesForgottenViews) {
    manager().addRule({.appName = u"Mail"_s});
    controller().showWindow();
    view<RulesViewController>()->ruleRowViewDidDelete(nullptr, manager().rules().front());
    window().close();
    controller().forgetViews();
    lastToastAction_.run();
    EXPECT_EQ(names(), QStringList{u"Mail"_s});
}

TEST_F(PreferencesWindow, IconsAreForgottenWithTheViews) {
    QPixmap red(28, 28);
    red.fill(Qt::red);
    catalog_.add(u"/mail"_s, u"Mail"_s, QIcon(red));
    manager().addRule({.appName = u"Mail"_s, .appPath = u"/mail"_s});
    const auto isIconShown = [this] {
        auto *const icon = view<RuleRowView>()->findChild<SymbolView *>();
        return icon->grab().toImage().pixelColor(14, 14) == Qt::red;
    };
    controller().showWindow();
    mainQueue_.runAll();
    backgroundQueue_.runAll();
    mainQueue_.runAll();
    EXPECT_TRUE(isIconShown());
    window().close();
    controller().forgetViews();
    controller().showWindow();
    EXPECT_FALSE(isIconShown());
}

TEST_F(PreferencesWindow, MinimizedItComesBack) {
    controller().showWindow();
    window().setWindowState(Qt::WindowMinimized);
    controller().showWindow();
    EXPECT_FALSE(window().isMinimized());
    EXPECT_TRUE(window().isVisible());
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

TEST_F(PreferencesWindow, ControlWAndControlQCloseItAndNothingElse) {
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_Q}) {
        controller().showWindow();
        ASSERT_TRUE(activate(window()));
        QTest::keyClick(&window(), key, Qt::ControlModifier);
        EXPECT_FALSE(window().isVisible()) << key;
    }
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
