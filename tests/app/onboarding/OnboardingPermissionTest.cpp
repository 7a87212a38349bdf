#include "app/onboarding/OnboardingFixture.h"

#include <QMouseEvent>

#include "ui/look/SystemColors.h"

namespace kestrelbay {
namespace {

class OnboardingPermissionTest : public OnboardingFixture {
protected:
    OnboardingPermissionTest() { goTo(1); }

    [[nodiscard]] TextLabel &status() const { return *steps().waitingLabel(); }
    void obstruct(TapProblem problem) {
        tap_.setRefusal(problem);
        manager_->reinstallEventTap();
        tap_.takeCalls();
    }
    void expectReason(TapProblem problem) const {
        EXPECT_TRUE(status().isVisible());
        EXPECT_EQ(status().text(), L::accessMissing(problem));
        EXPECT_EQ(status().palette().color(status().foregroundRole()), colors::systemOrange());
        EXPECT_TRUE(primary().isEnabled());
        EXPECT_EQ(primary().text(), L::permissionOpenSettings());
    }
    void expectDone(bool granted) const {
        EXPECT_EQ(visibleSteps().size(), 1);
        EXPECT_EQ(texts(), granted ? (QStringList{L::doneTitle(), L::doneBody(true),
                                                  L::doneAddShortcut(), L::skipForNow()})
                                   : (QStringList{L::doneWithoutPermissionTitle(),
                                                  L::doneWithoutPermissionBody(true),
                                                  L::doneOpenPreferences(), L::skipForNow()}));
    }
};

TEST_F(OnboardingPermissionTest, AsksBeforeItWaits) {
    EXPECT_EQ(texts(), (QStringList{L::permissionTitle(), L::permissionBody(),
                                    L::permissionOpenSettings(), L::skipForNow()}));
    EXPECT_EQ(steps().goSettingsBtn(), &primary());
    EXPECT_FALSE(status().isVisible());
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(OnboardingPermissionTest, OpensTheSettingsAndWaits) {
    primary().click();
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 1);
    EXPECT_FALSE(primary().isEnabled());
    EXPECT_EQ(primary().text(), L::permissionWaitingButton());
    EXPECT_TRUE(status().isVisible());
    EXPECT_EQ(status().text(), L::permissionWaiting());
    EXPECT_EQ(timers_.waitingCount(), 1U);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
}

TEST_F(OnboardingPermissionTest, WaitsAlsoWhereThereAreNoSettings) {
    systemSettings_.setHasAccessibilityPane(false);
    primary().click();
    timers_.advance(800ms);
    EXPECT_EQ(tap_.takeCalls(), QStringList{QStringLiteral("install")});
}

TEST_F(OnboardingPermissionTest, SaysAtOnceWhyItCannotCome) {
    for (const TapProblem problem : {TapProblem::WaylandSession, TapProblem::NoInputExtension}) {
        obstruct(problem);
        goTo(1);
        expectReason(problem);
        EXPECT_EQ(timers_.waitingCount(), 0U);
        primary().click();
        expectReason(problem);
        EXPECT_EQ(timers_.waitingCount(), 0U);
        EXPECT_TRUE(tap_.takeCalls().isEmpty());
    }
}

TEST_F(OnboardingPermissionTest, SaysWhatIsInTheWayAndLooksForItsEnd) {
    for (const TapProblem problem : {TapProblem::OtherInstance, TapProblem::NoDisplay}) {
        tap_.setPermission(false);
        obstruct(problem);
        goTo(1);
        expectReason(problem);
        primary().click();
        EXPECT_EQ(tap_.takeCalls(), QStringList{QStringLiteral("install")});
        expectReason(problem);
        timers_.advance(800ms);
        EXPECT_EQ(tap_.takeCalls(), QStringList{QStringLiteral("install")});
        expectReason(problem);
        tap_.setPermission(true);
        timers_.advance(800ms);
        EXPECT_EQ(status().text(), L::permissionGranted());
        EXPECT_FALSE(primary().isEnabled());
        timers_.advance(800ms);
        finishFade();
        expectDone(true);
        EXPECT_EQ(timers_.waitingCount(), 0U);
        tap_.takeCalls();
    }
}

TEST_F(OnboardingPermissionTest, InstallsAnExtensionThatIsMissing) {
    desktopExtension_.setState(ExtensionState::Missing);
    obstruct(TapProblem::ExtensionMissing);
    goTo(1);
    EXPECT_EQ(texts()[1], L::permissionExtensionBody());
    EXPECT_EQ(primary().text(), L::extensionInstall());
    EXPECT_FALSE(status().isVisible());
    EXPECT_EQ(desktopExtension_.installations(), 0);
    primary().click();
    EXPECT_EQ(desktopExtension_.installations(), 1);
    EXPECT_EQ(status().text(), L::extensionAfterLogin());
    EXPECT_TRUE(status().isVisible());
    tap_.setPermission(true);
    timers_.advance(800ms);
    EXPECT_EQ(status().text(), L::permissionGranted());
    timers_.advance(800ms);
    finishFade();
    expectDone(true);
}

TEST_F(OnboardingPermissionTest, APressFindsThatTheObstructionIsGone) {
    obstruct(TapProblem::OtherInstance);
    goTo(1);
    tap_.setPermission(true);
    primary().click();
    EXPECT_EQ(status().text(), L::permissionGranted());
    timers_.advance(800ms);
    finishFade();
    expectDone(true);
}

TEST_F(OnboardingPermissionTest, AnotherReasonIsToldWhenItComes) {
    obstruct(TapProblem::OtherInstance);
    goTo(1);
    tap_.setRefusal(TapProblem::NoDisplay);
    timers_.advance(800ms);
    expectReason(TapProblem::NoDisplay);
}

TEST_F(OnboardingPermissionTest, WhereNobodyHasToPermitItAccessThatIsThereIsNotAskedFor) {
    systemSettings_.setHasAccessibilityPane(false);
    tap_.setPermission(true);
    manager_->setupEventTap();
    tap_.takeCalls();
    goTo(1);
    EXPECT_EQ(texts().first(3), (QStringList{L::permissionThereTitle(), L::permissionThereBody(),
                                             L::permissionThereContinue()}));
    EXPECT_FALSE(link().isVisible());
    EXPECT_FALSE(steps().waitingLabel());
    press(Qt::Key_Tab);
    EXPECT_EQ(guide_->window()->focusWidget(), &primary());
    press(Qt::Key_Return);
    finishFade();
    expectDone(true);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
}

TEST_F(OnboardingPermissionTest, WhereNobodyHasToPermitItTheLastStepFollowsTheTap) {
    systemSettings_.setHasAccessibilityPane(false);
    link().click();
    finishFade();
    expectDone(false);
    goTo(1);
    tap_.setPermission(true);
    manager_->setupEventTap();
    link().click();
    finishFade();
    expectDone(true);
    tap_.takeAway();
    goTo(2);
    expectDone(false);
}

TEST_F(OnboardingPermissionTest, TriesTheTapEvery800Milliseconds) {
    primary().click();
    timers_.advance(799ms);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
    timers_.advance(1ms);
    EXPECT_EQ(tap_.takeCalls(), QStringList{QStringLiteral("install")});
    timers_.advance(799ms);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
    timers_.advance(1ms);
    EXPECT_EQ(tap_.takeCalls().size(), 1);
    timers_.advance(1h);
    EXPECT_EQ(tap_.takeCalls().size(), 3600 * 10 / 8);
    EXPECT_FALSE(steps().permissionGranted());
    EXPECT_EQ(status().text(), L::permissionWaiting());
    EXPECT_FALSE(primary().isEnabled());
    EXPECT_EQ(visibleSteps().size(), 1);
}

TEST_F(OnboardingPermissionTest, SaysThatItIsGrantedAndGoesOn) {
    primary().click();
    timers_.advance(800ms);
    tap_.setPermission(true);
    timers_.advance(799ms);
    EXPECT_FALSE(steps().permissionGranted());
    timers_.advance(1ms);
    EXPECT_TRUE(steps().permissionGranted());
    EXPECT_TRUE(tap_.isInstalled());
    EXPECT_EQ(status().text(), L::permissionGranted());
    EXPECT_EQ(status().palette().color(status().foregroundRole()), colors::systemGreen());
    tap_.takeCalls();

    timers_.advance(799ms);
    EXPECT_EQ(primary().text(), L::permissionWaitingButton());
    EXPECT_FALSE(fade());
    timers_.advance(1ms);
    EXPECT_TRUE(fade());
    finishFade();
    expectDone(true);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
}

TEST_F(OnboardingPermissionTest, ATapThatIsThereIsInstalledAnew) {
    tap_.setPermission(true);
    manager_->setupEventTap();
    tap_.takeCalls();
    primary().click();
    EXPECT_FALSE(steps().permissionGranted());
    timers_.advance(800ms);
    EXPECT_EQ(tap_.takeCalls(), (QStringList{QStringLiteral("remove"), QStringLiteral("install")}));
    EXPECT_TRUE(steps().permissionGranted());
}

TEST_F(OnboardingPermissionTest, SkippingShowsWhatIsLeftToDo) {
    link().click();
    EXPECT_TRUE(fade());
    finishFade();
    expectDone(false);
    EXPECT_FALSE(isCompleted());
}

TEST_F(OnboardingPermissionTest, SkippingEndsTheWait) {
    primary().click();
    link().click();
    finishFade();
    tap_.setPermission(true);
    timers_.advance(10s);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
    expectDone(false);
}

TEST_F(OnboardingPermissionTest, SkippingCountsEvenAfterTheGrantWasSeen) {
    primary().click();
    tap_.setPermission(true);
    timers_.advance(800ms);
    EXPECT_TRUE(steps().permissionGranted());
    link().click();
    finishFade();
    EXPECT_FALSE(steps().permissionGranted());
    expectDone(false);
    timers_.advance(800ms);
    EXPECT_FALSE(fade());
    expectDone(false);
}

TEST_F(OnboardingPermissionTest, NothingOpensTheSettingsTwice) {
    primary().click();
    const QPointF center = QRectF(primary().rect()).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, center, primary().mapToGlobal(center), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&primary(), &event);
    }
    primary().click();
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 1);
    EXPECT_EQ(primary().text(), L::permissionWaitingButton());
    EXPECT_FALSE(fade());
    EXPECT_EQ(timers_.waitingCount(), 1U);
}

TEST_F(OnboardingPermissionTest, WhoWaitsCanStillReachTheLinkByKeyboard) {
    primary().click();
    press(Qt::Key_Tab);
    EXPECT_EQ(guide_->window()->focusWidget(), &link());
    press(Qt::Key_Space);
    finishFade();
    expectDone(false);
}

TEST_F(OnboardingPermissionTest, ClosingTheWindowEndsTheWait) {
    primary().click();
    timers_.advance(800ms);
    tap_.takeCalls();
    guide_->window()->close();
    tap_.setPermission(true);
    timers_.advance(10s);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
    EXPECT_FALSE(steps().permissionGranted());
}

TEST_F(OnboardingPermissionTest, ClosingTheWindowAfterTheGrantLeavesTheStep) {
    primary().click();
    tap_.setPermission(true);
    timers_.advance(800ms);
    guide_->window()->close();
    timers_.advance(10s);
    EXPECT_EQ(primary().text(), L::permissionWaitingButton());
    EXPECT_TRUE(tap_.isInstalled());
    EXPECT_EQ(finished_, QStringList{QStringLiteral("leave")});
}

TEST_F(OnboardingPermissionTest, AGuideThatIsGoneWaitsNoLonger) {
    primary().click();
    guide_.reset();
    EXPECT_EQ(timers_.waitingCount(), 0U);
    timers_.advance(10s);
    EXPECT_TRUE(tap_.takeCalls().isEmpty());
}

TEST_F(OnboardingPermissionTest, WithoutItsControlsItDoesNotAsk) {
    goTo(2);
    EXPECT_FALSE(steps().goSettingsBtn());
    EXPECT_FALSE(steps().waitingLabel());
    steps().openAccessibilitySettings();
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 0);
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

}  // namespace
}  // namespace kestrelbay
