#include "app/AppDelegate.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "app/onboarding/OnboardingWindowController.h"
#include "app/toasts/LaunchToastWindow.h"
#include "fakes/FakePlatform.h"
#include "fakes/FakeSystemAlerts.h"
#include "fakes/FakeTimers.h"
#include "files/FileWatch.h"
#include "fixtures/QtPrinters.h"
#include "model/RuleFile.h"
#include "model/RuleJson.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/rules/RulesViewController.h"
#include "preferences/window/PreferencesWindowController.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "ui/widgets/TextLabel.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {
namespace {

using std::chrono_literals::operator""ms;

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() { platform_.setApplicationSupportDirectory(folder_.path()); }

    void completeOnboarding() {
        write(platform_.userDefaults(), settings::kOnboardingCompleted, true);
    }
    AppDelegate &launch() {
        delegate_.emplace(platform_, timers_, AppDelegate::makeManager(platform_), false);
        QObject::connect(&delegate_->notifications(), &Notifications::accessibilityGranted,
                         &context_, [this] { ++grantedPosts_; });
        QObject::connect(&delegate_->notifications(), &Notifications::keyAccessDidChange, &context_,
                         [this] { ++keyAccessPosts_; });
        delegate_->applicationDidFinishLaunching();
        return *delegate_;
    }
    QString firstTitle() const { return delegate_->statusMenu().actions().constFirst()->text(); }
    bool onboardingCompleted() {
        return read(platform_.userDefaults(), settings::kOnboardingCompleted);
    }
    static QList<QWidget *> visibleWindows() {
        QList<QWidget *> windows = QApplication::topLevelWidgets();
        windows.removeIf([](const QWidget *widget) { return !widget->isVisible(); });
        return windows;
    }

    QTemporaryDir folder_;
    FakePlatform platform_;
    FakeTimers timers_;
    QObject context_;
    int grantedPosts_ = 0;
    int keyAccessPosts_ = 0;
    std::optional<AppDelegate> delegate_;
};

TEST_F(AppDelegateTest, AFirstStartOpensTheGuide) {
    AppDelegate &delegate = launch();
    EXPECT_TRUE(platform_.isAccessory());
    EXPECT_TRUE(platform_.eventTap().isInstalled());
    EXPECT_FALSE(delegate.isPollingAccessibility());
    ASSERT_NE(delegate.onboarding(), nullptr);
    EXPECT_TRUE(delegate.onboarding()->window()->isVisible());
    EXPECT_EQ(grantedPosts_, 0) << "nothing was granted that was not there";
}

TEST_F(AppDelegateTest, ALaterStartOpensNothing) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    EXPECT_EQ(delegate.onboarding(), nullptr);
    EXPECT_EQ(delegate.preferences(), nullptr);
}

TEST_F(AppDelegateTest, AsksForThePermissionEverySecondAndTellsOfItOnce) {
    platform_.eventTap().setPermission(false);
    AppDelegate &delegate = launch();
    EXPECT_TRUE(delegate.isPollingAccessibility());
    ASSERT_NE(delegate.onboarding(), nullptr);
    platform_.eventTap().takeCalls();

    timers_.advance(999ms);
    EXPECT_EQ(platform_.eventTap().takeCalls(), QStringList());
    timers_.advance(1ms);
    EXPECT_EQ(platform_.eventTap().takeCalls(), QStringList(QStringLiteral("install")));
    timers_.advance(2000ms);
    EXPECT_EQ(platform_.eventTap().takeCalls().size(), 2);
    EXPECT_EQ(grantedPosts_, 0);

    platform_.eventTap().setPermission(true);
    timers_.advance(1000ms);
    EXPECT_TRUE(platform_.eventTap().isInstalled());
    EXPECT_FALSE(delegate.isPollingAccessibility());
    EXPECT_EQ(grantedPosts_, 1);
    platform_.eventTap().takeCalls();
    timers_.advance(5000ms);
    EXPECT_EQ(platform_.eventTap().takeCalls(), QStringList());
    EXPECT_EQ(grantedPosts_, 1);
}

TEST_F(AppDelegateTest, WhatCannotChangeIsLoggedOnceAndNotAskedForAgain) {
    platform_.eventTap().setPermission(false);
    platform_.eventTap().setRefusal(TapProblem::WaylandSession);
    completeOnboarding();
    const AppDelegate &delegate = launch();
    EXPECT_FALSE(delegate.isPollingAccessibility());
    timers_.advance(WindowRest::kDelayOfStart);
    EXPECT_EQ(timers_.waitingCount(), 0U) << "the program sleeps";
    EXPECT_EQ(platform_.systemLog().take(),
              QStringList(QStringLiteral("KestrelBay [WARN] No hotkeys: the keyboard cannot be "
                                         "read, this Wayland session gives programs no hotkeys")));
}

TEST_F(AppDelegateTest, WhatCanChangeIsAskedForAgainAndLoggedOnce) {
    platform_.eventTap().setPermission(false);
    platform_.eventTap().setRefusal(TapProblem::OtherInstance);
    completeOnboarding();
    const AppDelegate &delegate = launch();
    EXPECT_TRUE(delegate.isPollingAccessibility());
    timers_.advance(10000ms);
    EXPECT_EQ(platform_.systemLog().take().size(), 1);

    platform_.eventTap().setPermission(true);
    timers_.advance(1000ms);
    EXPECT_FALSE(delegate.isPollingAccessibility());
    EXPECT_EQ(grantedPosts_, 1);
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(AppDelegateTest, AsksForATapThatWasTakenAway) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    EXPECT_FALSE(delegate.isPollingAccessibility());
    platform_.eventTap().takeAway();
    EXPECT_FALSE(delegate.shortcutManager().isAccessibilityGranted());
    EXPECT_TRUE(delegate.isPollingAccessibility());
    platform_.eventTap().setPermission(true);
    timers_.advance(1000ms);
    EXPECT_TRUE(delegate.shortcutManager().isAccessibilityGranted());
    EXPECT_FALSE(delegate.isPollingAccessibility());
}

TEST_F(AppDelegateTest, AsksAgainForAPermissionThatWasWithdrawn) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    platform_.eventTap().setPermission(false);
    platform_.eventTap().disable(EventType::TapDisabledByUserInput);
    EXPECT_FALSE(delegate.shortcutManager().isAccessibilityGranted());
    EXPECT_TRUE(delegate.isPollingAccessibility());
    EXPECT_EQ(keyAccessPosts_, 1);
    platform_.eventTap().setPermission(true);
    timers_.advance(1000ms);
    EXPECT_TRUE(delegate.shortcutManager().isAccessibilityGranted());
    EXPECT_FALSE(delegate.isPollingAccessibility());
    EXPECT_EQ(grantedPosts_, 1);
}

TEST_F(AppDelegateTest, TellsThatTheSystemWithholdsKeys) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    platform_.eventTap().setKeysWithheld(true);
    EXPECT_EQ(keyAccessPosts_, 1);
    EXPECT_TRUE(delegate.shortcutManager().areKeysWithheld());
    EXPECT_FALSE(delegate.isPollingAccessibility());
    platform_.eventTap().setKeysWithheld(false);
    EXPECT_EQ(keyAccessPosts_, 2);
    EXPECT_FALSE(delegate.shortcutManager().areKeysWithheld());
}

TEST_F(AppDelegateTest, WhatAHotkeyDoesIsDoneInAHurry) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    const ShortcutRule rule{.id = QUuid::createUuid(),
                            .appPath = QStringLiteral("/Applications/Files")};
    delegate.shortcutManager().addRule(rule);
    EXPECT_EQ(platform_.hurriedThreads(), 0);
    EXPECT_TRUE(delegate.shortcutManager().runRule(rule.id));
    EXPECT_TRUE(QTest::qWaitFor([this] { return platform_.hurriedThreads() == 1; }));
}

TEST_F(AppDelegateTest, TellsOfHotkeysThatOtherProgramsHold) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.shortcutManager().addRule({.appPath = QStringLiteral("/Applications/Files"),
                                        .keyCode = KeyCode{40},
                                        .modifierFlags = ModifierFlags(0x100008)});
    int posts = 0;
    QObject::connect(&delegate.notifications(), &Notifications::refusedHotkeysDidChange, &context_,
                     [&posts] { ++posts; });
    platform_.eventTap().setHeldByOthers({{KeyCode{40}, ModifierFlags(0x100008)}});
    EXPECT_EQ(posts, 1);
    platform_.eventTap().setHeldByOthers({});
    EXPECT_EQ(posts, 2);
}

TEST_F(AppDelegateTest, TellsOfAnotherLayoutOfTheKeyboard) {
    int told = 0;
    QObject::connect(&launch().notifications(), &Notifications::keyboardLayoutDidChange, &context_,
                     [&] { ++told; });
    platform_.keyboardLayout().print({{key::kA, QStringLiteral("Q")}});
    EXPECT_EQ(told, 1);
    delegate_.reset();
    platform_.keyboardLayout().print({});
    EXPECT_EQ(told, 1);
}

TEST_F(AppDelegateTest, TheSwitchTurnsTheEntryAndKeepsTheTap) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    EXPECT_EQ(firstTitle(), QStringLiteral("Disable All Shortcuts"));
    delegate.performAction(QStringLiteral("toggle-all-shortcuts"));
    EXPECT_FALSE(delegate.shortcutManager().isEnabled());
    EXPECT_TRUE(platform_.eventTap().isInstalled());
    EXPECT_EQ(firstTitle(), QStringLiteral("Enable All Shortcuts"));
    delegate.toggleAllShortcuts();
    EXPECT_TRUE(delegate.shortcutManager().isEnabled());
    EXPECT_EQ(firstTitle(), QStringLiteral("Disable All Shortcuts"));
}

TEST_F(AppDelegateTest, AnotherLanguageRebuildsTheMenuAsTheSwitchStands) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.toggleAllShortcuts();
    write(platform_.userDefaults(), settings::kAppLanguage, QStringLiteral("zh"));
    EXPECT_EQ(firstTitle(), QStringLiteral("Enable All Shortcuts"));
    Q_EMIT delegate.notifications().languageDidChange();
    EXPECT_EQ(firstTitle(), QStringLiteral("启用全部快捷键"));
}

TEST_F(AppDelegateTest, TheGuideOpensAgainAndCountsAsNotCompleted) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.openOnboarding();
    EXPECT_FALSE(onboardingCompleted());
    ASSERT_NE(delegate.onboarding(), nullptr);
    OnboardingWindowController *first = delegate.onboarding();
    delegate.openOnboarding();
    EXPECT_NE(delegate.onboarding(), nullptr);
    EXPECT_NE(delegate.onboarding(), first) << "a new one, from its first step";
}

TEST_F(AppDelegateTest, AClosedGuideIsLetGo) {
    AppDelegate &delegate = launch();
    ASSERT_NE(delegate.onboarding(), nullptr);
    delegate.onboarding()->window()->close();
    EXPECT_EQ(delegate.onboarding(), nullptr);
    EXPECT_TRUE(onboardingCompleted());
    EXPECT_EQ(delegate.preferences(), nullptr);
}

TEST_F(AppDelegateTest, ThePreferencesAreMadeOnceAndClosingThemEndsNothing) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.performAction(QStringLiteral("preferences"));
    ASSERT_NE(delegate.preferences(), nullptr);
    QWidget *window = delegate.preferences()->window();
    EXPECT_TRUE(window->isVisible());
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(platform_.eventTap().isInstalled());
    delegate.openPreferences();
    EXPECT_EQ(delegate.preferences()->window(), window);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(AppDelegateTest, WhatClosedWindowsNeedIsGivenUpAfterAWhile) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.openPreferences();
    delegate.showAbout();
    delegate.openOnboarding();
    const QList<QWidget *> windows = visibleWindows();
    delegate.onboarding()->viewController().skipOnboarding();
    timers_.advance(WindowRest::kDelay);
    EXPECT_EQ(visibleWindows().size(), windows.size() - 1);
    EXPECT_EQ(platform_.memoryReturns(), 0);

    const QWidget *const preferences = delegate.preferences()->window();
    for (QWidget *const window : visibleWindows())
        window->close();
    timers_.advance(WindowRest::kDelay);
    EXPECT_EQ(platform_.memoryReturns(), 1);
    EXPECT_EQ(delegate.onboarding(), nullptr);
    EXPECT_EQ(preferences->findChild<RulesViewController *>(), nullptr);
    // The toast of the skipped guide.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::topLevelWidgets().size(), 2) << "the menu and an empty window";
    delegate.openPreferences();
    EXPECT_NE(preferences->findChild<RulesViewController *>(), nullptr);
}

TEST_F(AppDelegateTest, AWishForThePermissionRowOpensThePreferences) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    Q_EMIT delegate.notifications().openPreferencesToAccessibility();
    ASSERT_NE(delegate.preferences(), nullptr);
    EXPECT_TRUE(delegate.preferences()->window()->isVisible());
}

TEST_F(AppDelegateTest, QuittingIsNotFinishingTheGuide) {
    AppDelegate &delegate = launch();
    ASSERT_NE(delegate.onboarding(), nullptr);
    QTimer::singleShot(0, &context_, [&] { delegate.performAction(QStringLiteral("quit")); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(delegate.onboarding()->window()->isVisible());
    delegate_.reset();
    EXPECT_FALSE(onboardingCompleted());
}

TEST_F(AppDelegateTest, BeingAskedToQuitIsNotFinishingTheGuide) {
    AppDelegate &delegate = launch();
    ASSERT_NE(delegate.onboarding(), nullptr);
    // What Qt sends at the system's wish, after which it closes all windows.
    QTimer::singleShot(0, &context_, [] {
        QEvent event(QEvent::Quit);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
        EXPECT_TRUE(event.isAccepted());
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(delegate.onboarding()->window()->isVisible());
    delegate_.reset();
    EXPECT_FALSE(onboardingCompleted());
}

TEST_F(AppDelegateTest, OpeningTheProgramAgainOpensThePreferences) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    EXPECT_EQ(delegate.preferences(), nullptr);
    platform_.reopen();
    ASSERT_NE(delegate.preferences(), nullptr);
    EXPECT_TRUE(delegate.preferences()->window()->isVisible());
    delegate_.reset();
    platform_.reopen();
}

TEST_F(AppDelegateTest, AlertsAreTheSystemsWhereItHasThem) {
    FakeSystemAlerts alerts;
    platform_.setSystemAlerts(&alerts);
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.openPreferences();
    bool isDone = false;
    openDeleteConfirmation(delegate.preferences()->window(), QStringLiteral("Mail"),
                           [&isDone] { isDone = true; });
    QCoreApplication::processEvents();
    ASSERT_TRUE(alerts.alert());
    EXPECT_EQ(alerts.window(), delegate.preferences()->window()->winId());
    alerts.answer(true);
    EXPECT_TRUE(isDone);
    delegate_.reset();
}

TEST_F(AppDelegateTest, TheLastStepOfTheGuideLeadsToThePreferences) {
    AppDelegate &delegate = launch();
    const auto press = [&delegate] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QWidget *window = delegate.onboarding()->window();
        QCoreApplication::sendEvent(window->focusWidget() ? window->focusWidget() : window, &event);
    };
    press();
    press();
    timers_.advance(800ms);
    timers_.advance(800ms);
    press();
    EXPECT_EQ(delegate.onboarding(), nullptr);
    EXPECT_TRUE(onboardingCompleted());
    ASSERT_NE(delegate.preferences(), nullptr);
    EXPECT_TRUE(delegate.preferences()->window()->isVisible());
}

TEST_F(AppDelegateTest, GoesWithAToastAndTheGuideOnScreen) {
    write(platform_.userDefaults(), settings::kLaunchToastDuration, QStringLiteral("long"));
    launch();
    LaunchToastWindow::show({}, LaunchToastDuration::Long);
    EXPECT_GT(timers_.waitingCount(), 0U);
    delegate_.reset();
    EXPECT_EQ(timers_.waitingCount(), 0U);
    for (const QWidget *widget : QApplication::topLevelWidgets())
        EXPECT_FALSE(widget->isVisible()) << widget->metaObject()->className();
}

TEST_F(AppDelegateTest, AboutIsShownAgainAsTheSameWindow) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.performAction(QStringLiteral("about"));
    ASSERT_EQ(visibleWindows().size(), 1);
    QWidget *about = visibleWindows().constFirst();
    EXPECT_EQ(about->windowTitle(), QStringLiteral("About KestrelBay"));
    about->close();
    delegate.showAbout();
    EXPECT_EQ(visibleWindows(), QList<QWidget *>{about});
}

TEST_F(AppDelegateTest, UnknownActionsDoNothing) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    platform_.nativeWindow().takeCalls();
    QEventLoop loop;
    QTimer::singleShot(0, &context_, [&] {
        for (const char *name : {"", "fly", "Quit", "about-preferences"}) {
            delegate.performAction(QString::fromLatin1(name));
            EXPECT_TRUE(delegate.shortcutManager().isEnabled()) << name;
            EXPECT_EQ(firstTitle(), QStringLiteral("Disable All Shortcuts")) << name;
            EXPECT_TRUE(loop.isRunning()) << name << " ends the program";
        }
        loop.exit();
    });
    loop.exec();
    EXPECT_EQ(visibleWindows(), QList<QWidget *>());
    EXPECT_EQ(platform_.nativeWindow().takeCalls(), QStringList());
    EXPECT_EQ(delegate.preferences(), nullptr);
    EXPECT_EQ(delegate.onboarding(), nullptr);
    EXPECT_TRUE(onboardingCompleted());
}

TEST_F(AppDelegateTest, RunsARuleByItsIdOnly) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    const ShortcutRule rule{.appPath = QStringLiteral("/Applications/Files")};
    delegate.shortcutManager().addRule(rule);
    const QString id = rule.id.toString(QUuid::WithoutBraces);
    for (const QString &text :
         {QString(), rule.id.toString(), id + u' ', id.chopped(1), id + QStringLiteral("junk"),
          QString(10'000'000, u'a'), rule.id.toString(QUuid::Id128)})
        EXPECT_FALSE(delegate.runRule(text, {})) << qPrintable(text.left(80));
    EXPECT_EQ(platform_.workspace().requests().lines(), QStringList());
    EXPECT_TRUE(delegate.runRule(id, QStringLiteral("a token")));
    EXPECT_EQ(platform_.workspace().activationToken(), QStringLiteral("a token"));
    EXPECT_TRUE(delegate.runRule(id.toUpper(), {}));
    EXPECT_EQ(platform_.workspace().activationToken(), QString()) << "it was another's";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return platform_.workspace().requests().lines().join(u' ').contains(rule.appPath);
    }));
}

TEST_F(AppDelegateTest, AddsTheRulesOfAnImportAndShowsThem) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    delegate.openPreferences();
    const auto *const list = delegate.preferences()->window()->findChild<RulesViewController *>();
    const std::vector<ShortcutRule> rules{{.appPath = QStringLiteral("/Applications/Files")}};
    EXPECT_TRUE(delegate.importRules(QString::fromUtf8(encodeRules(rules))));
    EXPECT_EQ(delegate.shortcutManager().rules(), rules);
    EXPECT_TRUE(list->emptyLabel()->isHidden());
    EXPECT_FALSE(delegate.importRules(QStringLiteral("{}")));
    EXPECT_EQ(delegate.shortcutManager().rules(), rules);
}

TEST_F(AppDelegateTest, TakesInARuleFileThatIsEditedWhenNothingIsRecordedOrAsked) {
    completeOnboarding();
    AppDelegate &delegate = launch();
    ShortcutManager &manager = delegate.shortcutManager();
    int posts = 0;
    QObject::connect(&delegate.notifications(), &Notifications::rulesWereTakenIn, &context_,
                     [&posts] { ++posts; });
    const auto edit = [&](std::size_t count) {
        ASSERT_TRUE(RuleFile(RuleFile::pathIn(manager.storageDirectory()))
                        .save(std::vector<ShortcutRule>(count)));
    };
    const auto takesIn = [&](std::size_t count) {
        return QTest::qWaitFor([&] { return manager.rules().size() == count; });
    };
    int events = 0;
    const FileWatch watch(RuleFile::pathIn(manager.storageDirectory()), [&events] { ++events; });
    const auto hears = [&events] {
        return QTest::qWaitFor([&events] { return std::exchange(events, 0) > 0; });
    };
    edit(1);
    EXPECT_TRUE(takesIn(1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return posts == 1; }));

    EXPECT_TRUE(hears());
    manager.setRecordingCallback([](auto...) { return EventVerdict::Swallow; });
    edit(2);
    EXPECT_TRUE(hears());
    EXPECT_EQ(manager.rules().size(), 1U);
    manager.setRecordingCallback(nullptr);
    EXPECT_EQ(manager.rules().size(), 1U) << "what was recorded has to go in first";
    EXPECT_TRUE(takesIn(2));

    delegate.openPreferences();
    QWidget *const window = delegate.preferences()->window();
    window->findChild<RulesViewController *>()->addRule();
    auto *const sheet = window->findChild<Sheet *>();
    ASSERT_NE(sheet, nullptr);
    events = 0;
    edit(3);
    EXPECT_TRUE(hears());
    EXPECT_EQ(manager.rules().size(), 2U);
    sheet->reject();
    EXPECT_TRUE(takesIn(3));
    EXPECT_TRUE(QTest::qWaitFor([&] { return posts == 3; }));
}

}  // namespace
}  // namespace kestrelbay
