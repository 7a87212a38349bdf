#include "app/onboarding/OnboardingFixture.h"

#include <QGraphicsOpacityEffect>
#include <QPointer>
#include <QScreen>

namespace kestrelbay {
namespace {

class OnboardingFlowTest : public OnboardingFixture {
protected:
    [[nodiscard]] qreal opacity(OnboardingStep *step) const {
        return qobject_cast<QGraphicsOpacityEffect *>(step->graphicsEffect())->opacity();
    }
    void expectLeftByLink(const QString &toast) {
        EXPECT_TRUE(isCompleted());
        EXPECT_FALSE(guide_->window()->isVisible());
        EXPECT_EQ(toasts_, QStringList{toast});
        EXPECT_EQ(finished_, QStringList{});
    }
    void expectClosedByUser() {
        EXPECT_TRUE(isCompleted());
        EXPECT_FALSE(guide_->window()->isVisible());
        EXPECT_EQ(toasts_, QStringList{});
        EXPECT_EQ(finished_, QStringList{QStringLiteral("leave")});
        EXPECT_EQ(timers_.waitingCount(), 0U);
        finished_.clear();
    }
};

TEST_F(OnboardingFlowTest, BeginsWithTheWelcome) {
    EXPECT_EQ(texts(), (QStringList{L::welcomeTitle(), L::welcomeBody(), L::welcomeTip(),
                                    L::welcomeStart(), L::welcomeDismiss()}));
    EXPECT_EQ(visibleSteps().size(), 1);
    EXPECT_FALSE(fade());
    EXPECT_FALSE(steps().permissionGranted());
    EXPECT_FALSE(isCompleted());
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
}

TEST_F(OnboardingFlowTest, ComesForwardInTheMiddleOfTheScreen) {
    EXPECT_TRUE(guide_->window()->isVisible());
    EXPECT_EQ(
        nativeWindow_.takeCalls(),
        (QStringList{QStringLiteral("extendContentUnderTitleBar %1"),
                     QStringLiteral("bringProgramForward %1")}
             .replaceInStrings(QStringLiteral("%1"), QString::number(guide_->window()->winId()))));
    // The frame is not known before the window is in view.
    const QPoint off = guide_->window()->frameGeometry().center() -
                       QGuiApplication::primaryScreen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 4);
}

TEST_F(OnboardingFlowTest, ShownAgainItStaysWhereTheUserPutIt) {
    guide_->window()->move(3, 4);
    nativeWindow_.takeCalls();
    guide_->showWindow();
    EXPECT_EQ(guide_->window()->pos(), QPoint(3, 4));
    EXPECT_EQ(nativeWindow_.takeCalls().size(), 1);
}

TEST_F(OnboardingFlowTest, TheStepsFadeIntoEachOther) {
    OnboardingStep *const welcome = &step();
    primary().click();
    ASSERT_EQ(visibleSteps().size(), 2);
    OnboardingStep *const permission = &step();
    ASSERT_TRUE(fade());
    EXPECT_EQ(fade()->totalDuration(), 150);
    EXPECT_EQ(fade()->state(), QAbstractAnimation::Running);
    fade()->setCurrentTime(0);
    EXPECT_EQ(opacity(welcome), 1);
    EXPECT_EQ(opacity(permission), 0);
    fade()->setCurrentTime(75);
    EXPECT_EQ(opacity(welcome), 0.5);
    EXPECT_EQ(opacity(permission), 0.5);
    fade()->setCurrentTime(149);
    EXPECT_EQ(visibleSteps().size(), 2);

    const QPointer<OnboardingStep> old(welcome);
    finishFade();
    EXPECT_FALSE(old);
    EXPECT_EQ(visibleSteps(), QList{permission});
    EXPECT_FALSE(permission->graphicsEffect());
    EXPECT_EQ(permission->geometry(), guide_->window()->rect());
}

TEST_F(OnboardingFlowTest, WhileTheStepsFadeNeitherTakesClicksNorTheOldOneTheFocus) {
    OnboardingStep *const welcome = &step();
    primary().click();
    OnboardingStep *const permission = &step();
    EXPECT_TRUE(welcome->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_TRUE(permission->testAttribute(Qt::WA_TransparentForMouseEvents));
    for (int tab = 0; tab < 3; ++tab) {
        EXPECT_TRUE(permission->isAncestorOf(guide_->window()->focusWidget()));
        press(Qt::Key_Tab);
    }
    finishFade();
    EXPECT_FALSE(permission->testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(OnboardingFlowTest, AReturnThatIsHeldPressesOnce) {
    const auto repeat = [this] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(guide_->window()->focusWidget(), &event);
    };
    press(Qt::Key_Return);
    finishFade();
    repeat();
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 0);
    press(Qt::Key_Tab);
    repeat();
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 0);
    EXPECT_EQ(primary().text(), L::permissionOpenSettings());
}

TEST_F(OnboardingFlowTest, AStepChangeWithinAFadeEndsThatFade) {
    primary().click();
    OnboardingStep *const permission = &step();
    fade()->setCurrentTime(75);
    link().click();
    EXPECT_EQ(visibleSteps().size(), 2);
    EXPECT_EQ(visibleSteps().constFirst(), permission);
    EXPECT_EQ(opacity(permission), 1);
    deleteWhatIsDueLater();
    finishFade();
    EXPECT_EQ(visibleSteps().size(), 1);
    EXPECT_EQ(primary().text(), L::doneOpenPreferences());
}

TEST_F(OnboardingFlowTest, WithoutAnimationTheStepIsReplacedAtOnce) {
    steps().showStep(1, false);
    EXPECT_EQ(visibleSteps().size(), 1);
    EXPECT_FALSE(fade());
    EXPECT_EQ(primary().text(), L::permissionOpenSettings());
    EXPECT_EQ(steps().goSettingsBtn(), &primary());
}

TEST_F(OnboardingFlowTest, DismissLeaves) {
    link().click();
    expectLeftByLink(L::guideSkippedToast(true));
}

TEST_F(OnboardingFlowTest, SkippingTheLastStepLeaves) {
    goTo(2);
    EXPECT_EQ(link().text(), L::skipForNow());
    link().click();
    expectLeftByLink(L::guideFinishedToast(true));
}

TEST_F(OnboardingFlowTest, WithoutATrayTheToastsLeadToNone) {
    systemTray_.setAvailable(false);
    link().click();
    expectLeftByLink(L::guideSkippedToast(false));
    toasts_.clear();
    open();
    goTo(2);
    link().click();
    expectLeftByLink(L::guideFinishedToast(false));
}

TEST_F(OnboardingFlowTest, WithoutATrayTheLastStepLeadsToNone) {
    systemTray_.setAvailable(false);
    goTo(2);
    EXPECT_EQ(texts().at(1), L::doneWithoutPermissionBody(false));
    wait();
    tap_.setPermission(true);
    timers_.advance(1600ms);
    finishFade();
    EXPECT_EQ(texts().at(1), L::doneBody(false));
}

TEST_F(OnboardingFlowTest, TheLastStepKnowsATrayThatCameLate) {
    systemTray_.setAvailable(false);
    goTo(1);
    systemTray_.setAvailable(true);
    goTo(2);
    EXPECT_EQ(texts().at(1), L::doneWithoutPermissionBody(true));
}

TEST_F(OnboardingFlowTest, TheLastStepOpensThePreferences) {
    goTo(2);
    guide_->setOnFinished([this](bool openPreferences) {
        EXPECT_TRUE(openPreferences);
        EXPECT_TRUE(isCompleted());
        EXPECT_FALSE(guide_->window()->isVisible());
        finished_.append(QStringLiteral("told"));
    });
    primary().click();
    EXPECT_EQ(finished_, QStringList{QStringLiteral("told")});
    EXPECT_EQ(toasts_, QStringList{});
}

TEST_F(OnboardingFlowTest, TheCloseButtonLeavesAnyStep) {
    for (const int index : {0, 1, 2}) {
        write(defaults_, settings::kOnboardingCompleted, false);
        open();
        goTo(index);
        guide_->window()->close();
        expectClosedByUser();
    }
}

TEST_F(OnboardingFlowTest, TheKeyboardClosesTheWindowToo) {
    press(Qt::Key_Escape);
    expectClosedByUser();
    open();
    wait();
    press(Qt::Key_W, Qt::ControlModifier);
    expectClosedByUser();
}

TEST_F(OnboardingFlowTest, ClosingWithinAFadeLeaves) {
    primary().click();
    guide_->window()->close();
    expectClosedByUser();
}

TEST_F(OnboardingFlowTest, NobodyNeedsToBeTold) {
    guide_->setOnFinished({});
    goTo(2);
    primary().click();
    EXPECT_TRUE(isCompleted());
    EXPECT_FALSE(guide_->window()->isVisible());
    open();
    guide_->setOnFinished({});
    guide_->window()->close();
    EXPECT_FALSE(guide_->window()->isVisible());
}

TEST_F(OnboardingFlowTest, ReturnPressesThePrimaryButtonOfEachStep) {
    press(Qt::Key_Return);
    finishFade();
    EXPECT_EQ(primary().text(), L::permissionOpenSettings());
    press(Qt::Key_Enter);
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 1);
    goTo(2);
    press(Qt::Key_Return);
    EXPECT_EQ(finished_, QStringList{QStringLiteral("open")});
}

TEST_F(OnboardingFlowTest, ReturnPressesTheLinkThatHasTheFocus) {
    press(Qt::Key_Tab);
    ASSERT_EQ(guide_->window()->focusWidget(), &link());
    press(Qt::Key_Return);
    expectLeftByLink(L::guideSkippedToast(true));
}

TEST_F(OnboardingFlowTest, TheSpaceBarPressesTheLink) {
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    expectLeftByLink(L::guideSkippedToast(true));
}

TEST_F(OnboardingFlowTest, TheGuideMayGoWhileItTells) {
    for (const bool byCloseButton : {false, true}) {
        open();
        const QPointer<QWidget> window(guide_->window());
        guide_->setOnFinished([this](bool) { guide_.reset(); });
        goTo(2);
        if (byCloseButton)
            window->close();
        else
            primary().click();
        EXPECT_FALSE(guide_);
        ASSERT_TRUE(window);
        EXPECT_FALSE(window->isVisible());
        deleteWhatIsDueLater();
        EXPECT_FALSE(window);
    }
}

TEST_F(OnboardingFlowTest, TheGuideMayGoSoonAfter) {
    goTo(2);
    const QPointer<QWidget> window(guide_->window());
    guide_->setOnFinished([this](bool) { guide_.release()->deleteLater(); });
    window->close();
    EXPECT_TRUE(window);
    deleteWhatIsDueLater();
    EXPECT_FALSE(window);
}

TEST_F(OnboardingFlowTest, ANewGuideBeginsAnew) {
    wait();
    tap_.setPermission(true);
    timers_.advance(800ms);
    EXPECT_TRUE(steps().permissionGranted());
    open();
    EXPECT_FALSE(steps().permissionGranted());
    EXPECT_EQ(primary().text(), L::welcomeStart());
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(OnboardingFlowTest, TextsAreInTheLanguageOfTheMomentTheyAreBuilt) {
    const QStringList english = texts();
    speak(QStringLiteral("zh"));
    EXPECT_EQ(texts(), english);
    goTo(1);
    EXPECT_EQ(texts(), (QStringList{L::permissionTitle(), L::permissionBody(),
                                    L::permissionOpenSettings(), L::skipForNow()}));
    EXPECT_EQ(link().text(), QStringLiteral("稍后再说"));
}

}  // namespace
}  // namespace kestrelbay
