#include "app/onboarding/OnboardingWindowController.h"

#include <chrono>
#include <utility>

#include <QGraphicsOpacityEffect>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QPushButton>

#include "app/onboarding/OnboardingSteps.h"
#include "hotkeys/ShortcutManager.h"
#include "hotkeys/TapProblems.h"
#include "platform/DesktopExtension.h"
#include "platform/NativeWindow.h"
#include "platform/SystemSettings.h"
#include "platform/SystemTray.h"
#include "settings/L.h"
#include "settings/SettingsKeys.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/LinkButton.h"
#include "ui/widgets/TextLabel.h"
#include "ui/windows/CenteredWindow.h"
#include "ui/windows/FixedWindow.h"

using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

constexpr int kWelcomeStep = 0;
constexpr int kPermissionStep = 1;
constexpr int kDoneStep = 2;

constexpr std::chrono::milliseconds kFadeDuration = 150ms;
constexpr std::chrono::milliseconds kPollInterval = 800ms;
/// How long the user gets to see that the permission is there.
constexpr std::chrono::milliseconds kGrantedDelay = 800ms;

/// A press of its own button may still be under way.
void discard(QWidget *view) {
    view->hide();
    view->deleteLater();
}

QPropertyAnimation *opacityAnimation(QWidget *view, qreal from, qreal to) {
    auto *effect = new QGraphicsOpacityEffect(view);
    effect->setOpacity(from);
    view->setGraphicsEffect(effect);
    auto *animation = new QPropertyAnimation(effect, "opacity");
    animation->setDuration(int(kFadeDuration.count()));
    animation->setStartValue(from);
    animation->setEndValue(to);
    return animation;
}

}  // namespace

OnboardingViewController::OnboardingViewController(QWidget &view, Services services)
    : services_(std::move(services)), contentContainer_(new QWidget(&view)) {
    contentContainer_->setFixedSize(OnboardingStep::kSize);
    showStep(kWelcomeStep, false);
}

QPushButton *OnboardingViewController::goSettingsBtn() const {
    return waitingLabel() ? &step_->primaryButton() : nullptr;
}

TextLabel *OnboardingViewController::waitingLabel() const {
    return step_ ? step_->statusLabel() : nullptr;
}

void OnboardingViewController::showStep(int index, bool animated) {
    endFade();
    QWidget *const previous = step_;
    step_ = makeStep(index);
    step_->setGeometry(contentContainer_->rect());
    step_->show();
    // Before the previous step goes, so that the focus does not go astray.
    step_->primaryButton().setFocus();
    if (waitingLabel() && isObstructed()) {
        showObstruction();
        if (canChange(services_.manager.tapProblem()))
            startPolling();
    }
    if (animated && previous)
        fade(previous, step_);
    else if (previous)
        discard(previous);
}

OnboardingStep *OnboardingViewController::makeStep(int index) {
    OnboardingStep *step = nullptr;
    const bool needsPermission = services_.systemSettings.hasAccessibilityPane();
    const bool seesKeys = services_.manager.isAccessibilityGranted();
    const auto connectButtons = [&](auto primary, auto link) {
        connect(&step->primaryButton(), &QPushButton::clicked, this, primary);
        connect(&step->link(), &LinkButton::clicked, this, link);
    };
    if (index == kWelcomeStep) {
        step = OnboardingStep::welcome(contentContainer_);
        connectButtons(&OnboardingViewController::goToPermission,
                       &OnboardingViewController::skipOnboarding);
    } else if (index == kPermissionStep && !needsPermission && seesKeys) {
        step = OnboardingStep::permissionThere(contentContainer_);
        connectButtons(&OnboardingViewController::goToDone, &OnboardingViewController::goToDone);
    } else if (index == kPermissionStep) {
        step = lacksExtension() ? OnboardingStep::permissionByExtension(contentContainer_)
                                : OnboardingStep::permission(contentContainer_);
        connectButtons(&OnboardingViewController::openAccessibilitySettings,
                       &OnboardingViewController::skipPermission);
    } else {
        step = OnboardingStep::done(needsPermission ? permissionGranted_ : seesKeys,
                                    services_.systemTray.isAvailable(), contentContainer_);
        connectButtons(&OnboardingViewController::finishAndOpenPrefs,
                       &OnboardingViewController::finishWithoutPrefs);
    }
    return step;
}

void OnboardingViewController::fade(QWidget *from, QWidget *to) {
    // A second click of a double click is not meant for what comes into view, nor is
    // what goes to be used once more.
    from->setAttribute(Qt::WA_TransparentForMouseEvents);
    to->setAttribute(Qt::WA_TransparentForMouseEvents);
    for (auto *button : from->findChildren<QAbstractButton *>())
        button->setFocusPolicy(Qt::NoFocus);
    auto *group = new QParallelAnimationGroup(contentContainer_);
    group->addAnimation(opacityAnimation(from, 1, 0));
    group->addAnimation(opacityAnimation(to, 0, 1));
    connect(group, &QAbstractAnimation::finished, to, [from, to] {
        discard(from);
        // Text is drawn more crisply without an effect.
        to->setGraphicsEffect(nullptr);
        to->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    });
    fade_ = group;
    group->start(QAbstractAnimation::DeleteWhenStopped);
}

void OnboardingViewController::endFade() {
    if (fade_)
        fade_->setCurrentTime(fade_->totalDuration());
    fade_.clear();
}

void OnboardingViewController::goToPermission() {
    showStep(kPermissionStep, true);
}

void OnboardingViewController::openAccessibilitySettings() {
    if (!waitingLabel())
        return;
    if (lacksExtension())
        services_.desktopExtension->install();
    if (isObstructed()) {
        if (canChange(services_.manager.tapProblem()))
            checkPermission();
        return;
    }
    disablePrimaryButton();
    goSettingsBtn()->setText(L::permissionWaitingButton());
    waitingLabel()->show();
    services_.systemSettings.openAccessibilityPane();
    startPolling();
}

bool OnboardingViewController::isObstructed() const {
    const TapProblem problem = services_.manager.tapProblem();
    return !services_.manager.isAccessibilityGranted() && problem != TapProblem::None &&
           problem != TapProblem::NotPermitted;
}

bool OnboardingViewController::lacksExtension() const {
    return services_.desktopExtension && isObstructed() &&
           services_.manager.tapProblem() == TapProblem::ExtensionMissing;
}

void OnboardingViewController::showObstruction() const {
    QString text = L::accessMissing(services_.manager.tapProblem());
    bool isInstalled = false;
    // Of one that is missing the step itself says why it is needed.
    bool isToldByStep = false;
    if (lacksExtension()) {
        const ExtensionState state = services_.desktopExtension->state();
        text = L::extensionText(state);
        isInstalled = state == ExtensionState::AfterLogin;
        isToldByStep = state == ExtensionState::Missing;
    }
    waitingLabel()->setText(text);
    waitingLabel()->setColor(isInstalled ? colors::systemGreen : colors::systemOrange);
    waitingLabel()->setVisible(!isToldByStep);
}

void OnboardingViewController::disablePrimaryButton() {
    // Otherwise the focus would go to the link, and whoever presses the key once
    // more would skip the step unawares.
    step_->setFocus();
    step_->primaryButton().setEnabled(false);
}

void OnboardingViewController::startPolling() {
    permissionTimer_ = services_.timers.every(kPollInterval, [this] { checkPermission(); });
}

void OnboardingViewController::checkPermission() {
    services_.manager.reinstallEventTap();
    if (!services_.manager.isAccessibilityGranted()) {
        if (waitingLabel() && isObstructed())
            showObstruction();
        return;
    }
    permissionTimer_.reset();
    permissionGranted_ = true;
    if (TextLabel *const label = waitingLabel()) {
        disablePrimaryButton();
        label->setText(L::permissionGranted());
        label->setColor(colors::systemGreen);
    }
    nextStepTimer_ = services_.timers.once(kGrantedDelay, [this] { goToDone(); });
}

void OnboardingViewController::stopWaiting() {
    permissionTimer_.reset();
    nextStepTimer_.reset();
}

void OnboardingViewController::skipPermission() {
    stopWaiting();
    permissionGranted_ = false;
    goToDone();
}

void OnboardingViewController::goToDone() {
    showStep(kDoneStep, true);
}

void OnboardingViewController::finishAndOpenPrefs() {
    if (const auto onFinished = onFinished_)  // which may take this away
        onFinished(true);
}

void OnboardingViewController::finishWithoutPrefs() {
    closeWith(L::guideFinishedToast);
}

void OnboardingViewController::skipOnboarding() {
    closeWith(L::guideSkippedToast);
}

void OnboardingViewController::closeWith(const LTrayText &toast) {
    write(services_.defaults, settings::kOnboardingCompleted, true);
    contentContainer_->window()->hide();
    services_.showToast(toast(services_.systemTray.isAvailable()));
}

OnboardingWindowController::OnboardingWindowController(Services services)
    : services_(std::move(services)),
      window_(std::make_unique<FixedWindow>(OnboardingStep::kSize, QString())),
      viewController_(std::make_unique<OnboardingViewController>(*window_->content(), services_)) {
    // It has no title that could tell what it is.
    window_->setAccessibleName(L::programName());
    window_->setMovableByBackground(true);
    services_.nativeWindow.extendContentUnderTitleBar(window_->winId());
    window_->setCloseHandler([this] { windowShouldClose(); });
    viewController_->setOnFinished([this](bool openPreferences) {
        write(services_.defaults, settings::kOnboardingCompleted, true);
        window_->hide();
        finish(openPreferences);
    });
}

OnboardingWindowController::~OnboardingWindowController() {
    window_->setCloseHandler({});
    window_->hide();
    // An event handler of the window is then still on the stack.
    if (isFinishing_)
        window_.release()->deleteLater();
}

void OnboardingWindowController::showWindow() {
    if (!window_->isVisible())
        centerOnActiveScreen(*window_, services_.nativeWindow);
    window_->show();
    window_->raise();
    services_.nativeWindow.bringProgramForward(window_->winId());
}

QWidget *OnboardingWindowController::window() const {
    return window_.get();
}

void OnboardingWindowController::windowShouldClose() {
    viewController_->stopWaiting();
    write(services_.defaults, settings::kOnboardingCompleted, true);
    finish(false);
}

void OnboardingWindowController::finish(bool openPreferences) {
    const QPointer<OnboardingWindowController> self(this);
    isFinishing_ = true;
    if (const auto onFinished = std::exchange(onFinished_, nullptr))
        onFinished(openPreferences);
    if (self)
        isFinishing_ = false;
}

}  // namespace kestrelbay
