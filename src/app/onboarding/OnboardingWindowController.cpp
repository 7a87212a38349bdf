#include "app/onboarding/OnboardingWindowController.h"

#include <utility>

#include <QPointer>

#include "app/onboarding/OnboardingSteps.h"
#include "app/onboarding/OnboardingViewController.h"
#include "platform/NativeWindow.h"
#include "settings/L.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Screens.h"
#include "ui/windows/FixedWindow.h"

namespace kestrelbay {

OnboardingWindowController::OnboardingWindowController(Services services)
    : services_(std::move(services)),
      window_(std::make_unique<FixedWindow>(OnboardingStep::kSize, QString())),
      viewController_(std::make_unique<OnboardingViewController>(
          *window_, OnboardingViewController::Services{.manager = services_.manager,
                                                       .defaults = services_.defaults,
                                                       .systemSettings = services_.systemSettings,
                                                       .timers = services_.timers,
                                                       .showToast = services_.showToast})) {
    // It has no title that could tell what it is.
    window_->setAccessibleName(L::programName());
    window_->setMovableByBackground(true);
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

void OnboardingWindowController::setOnFinished(std::function<void(bool)> onFinished) {
    onFinished_ = std::move(onFinished);
}

void OnboardingWindowController::showWindow() {
    if (!window_->isVisible())
        window_->centerOn(activeScreen(services_.nativeWindow));
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
