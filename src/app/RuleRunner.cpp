#include "app/RuleRunner.h"

#include <chrono>
#include <utility>
#include <vector>

#include "app/toasts/LaunchToastWindow.h"
#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/ApplicationCatalog.h"
#include "platform/SystemLog.h"
#include "platform/SystemSounds.h"
#include "platform/Workspace.h"
#include "settings/SettingsKeys.h"
#include "tasks/DispatchQueue.h"
#include "tasks/Timers.h"
#include "ui/look/Screens.h"

namespace kestrelbay {

namespace {

/// One that takes longer is told of, and the next press waits no longer for it.
constexpr std::chrono::milliseconds kSlowLaunch{500};

/// The display server is left to the launch for so long: it runs beside the main thread or not at
/// all, where a machine has few processors.
constexpr std::chrono::milliseconds kBeforeSound{2};

void playFeedbackSound(const RuleRunner::Services &services) {
    const QString name = read(services.defaults, settings::kSoundFeedbackName);
    if (!name.isEmpty())
        services.sounds.play(name);
}

void handleTimed(const std::shared_ptr<const RuleRunner::Services> &shared,
                 const ShortcutRule &rule, Turns::Turn &turn) {
    const RuleRunner::Services &services = *shared;
    const Clock::TimePoint start = services.clock.now();
    const AppLauncher::Outcome outcome =
        services.launcher.handle(rule, [&turn] { return turn.claim(); });
    const std::chrono::duration<double> elapsed = services.clock.now() - start;
    if (outcome == AppLauncher::Outcome::OpenedUnseen && services.openedUnseen)
        services.mainQueue.async([shared, path = rule.appPath] { shared->openedUnseen(path); });
    if (elapsed <= kSlowLaunch)
        return;
    services.log.write(QStringLiteral("KestrelBay [WARN] AppLauncher.handle took ") +
                       QString::number(elapsed.count(), 'f', 2) + QStringLiteral("s for ") +
                       rule.appPath);
}

/// After the launch: only the main thread knows the screens, and reading an icon can take longer
/// than a key press may wait.
void queueLaunchToast(const std::shared_ptr<const RuleRunner::Services> &services,
                      const QString &appPath) {
    if (!services->showLaunchToast)
        return;
    const LaunchToastDuration duration = currentLaunchToastDuration(services->defaults);
    if (duration == LaunchToastDuration::None)
        return;
    services->mainQueue.async([services, appPath, duration] {
        services->launchQueue.async([services, appPath, duration,
                                     icons = listIconsForScreens(LaunchToastWindow::kIconSide)] {
            std::vector<QImage> images = services->catalog.listIcons({appPath}, icons);
            services->mainQueue.async([services, image = std::move(images.front()), duration] {
                services->showLaunchToast(image, duration);
            });
        });
    });
}

}  // namespace

RuleRunner::RuleRunner(Services services)
    : services_(std::make_shared<const Services>(std::move(services))), turns_(kSlowLaunch) {}

void RuleRunner::ruleFired(const ShortcutRule &rule) {
    auto turn = turns_.take();
    // What the one before asks for would not be in the answer, which a launch does not take.
    if (turn->isNext() && rule.argumentKind != ArgumentKind::LaunchArgs)
        services_->workspace.askAhead();
    services_->launchQueue.async([services = services_, rule, turn = std::move(turn)] {
        turn->run([&] { handleTimed(services, rule, *turn); });
        queueLaunchToast(services, rule.appPath);
    });
    // One that has not begun yet is this one.
    sound_ = services_->timers.once(kBeforeSound,
                                    [services = services_] { playFeedbackSound(*services); });
}

}  // namespace kestrelbay
